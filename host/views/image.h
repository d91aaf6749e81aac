#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/images/bitmap.h"
#include "host/runtime/object.h"
#include "platform/graphics.h"

namespace host::views {

/// A decoded picture, and the device path of the file that it came from. Counts against
/// images::kMaxPixelsTogether as long as it lives; main thread only.
struct BitmapObject final : objc_object {
  BitmapObject(images::Bitmap pixels, std::string filePath);
  BitmapObject(const BitmapObject&) = delete;
  BitmapObject& operator=(const BitmapObject&) = delete;
  ~BitmapObject() override;
  images::Bitmap bitmap;
  std::string path;
};

/// Who is told, for people, of a file that was taken for a picture and is none: its device path,
/// control characters escaped, and why. None at first. Main thread only.
void setBrokenPictureEcho(std::function<void(std::string_view path, std::string_view reason)> echo);

/// A bitmap for a scale, in pixels a point.
struct ImageObject final : objc_object {
  ImageObject(platform::Retained<platform::CGImageRef> pixels, double imageScale);
  const BitmapObject* bitmap() const { return runtime::as<BitmapObject>(image.get()); }
  platform::Retained<platform::CGImageRef> image;  ///< may be null
  double scale;
};

}  // namespace host::views
