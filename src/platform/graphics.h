#pragma once

// Colours, images, views and the screen.

#include <cstddef>
#include <span>
#include <string_view>

#include "platform/foundation.h"
#include "platform/object.h"

namespace platform {

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

class PLATFORM_API CGColorSpaceRef : public Object {
 public:
  using Object::Object;
};

class PLATFORM_API CGColorRef : public Object {
 public:
  using Object::Object;
};

/// A colour of `space` from red, green, blue and alpha, each 0 to 1; null when it can't be made.
PLATFORM_API Retained<CGColorRef> CGColorCreate(CGColorSpaceRef space,
                                                std::span<const double, 4> components);

/// A decoded bitmap.
class PLATFORM_API CGImageRef : public Object {
 public:
  using Object::Object;
};

/// A bitmap together with the scale that it is meant for.
class PLATFORM_API UIImage : public Object {
 public:
  using Object::Object;
  /// Null when the bytes are no picture that the platform can decode.
  static UIImage imageWithData(NSData data);
  CGImageRef CGImage() const;
  /// `scale` is pixels a point; `orientation` 0 is upright. Null for a null bitmap.
  static Retained<UIImage> initWithCGImage(CGImageRef bitmap, double scale, int orientation);
  /// An image of scale 1; null when the bytes are no picture that the platform can decode.
  static Retained<UIImage> initWithData(NSData data);
};

class PLATFORM_API UIView : public Object {
 public:
  using Object::Object;
  /// The frame in the superview's coordinates; empty for a null view.
  Rect frame() const;
  void setFrame(const Rect& frame) const;
  void setTag(int tag) const;
  /// The first view with that tag: this one, then its subviews from the backmost, each with all
  /// that lies below it; null when there is none.
  UIView viewWithTag(int tag) const;
  /// Makes `subview` a subview, which this view then owns. Index 0 is the backmost.
  void insertSubview(UIView subview, std::size_t index) const;
};

/// A view that stretches an image over its frame.
class PLATFORM_API UIImageView : public UIView {
 public:
  using UIView::UIView;
  /// A view without an image.
  static Retained<UIImageView> initWithFrame(const Rect& frame);
  /// The view keeps the image; null clears it.
  void setImage(UIImage image) const;
};

class PLATFORM_API UIScreen : public Object {
 public:
  using Object::Object;
  static UIScreen mainScreen();
  /// Pixels a point.
  double scale() const;
};

class PLATFORM_API UIDevice : public Object {
 public:
  using Object::Object;
  static UIDevice currentDevice();
  /// 0 a phone, 1 a tablet. Not every device answers it.
  int userInterfaceIdiom() const;
  /// Such as "7.0.4".
  std::string_view systemVersion() const;
};

}  // namespace platform
