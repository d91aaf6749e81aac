#pragma once

#include <vector>

#include "host/runtime/object.h"
#include "platform/graphics.h"

namespace host::views {

/// A view. It keeps its subviews, backmost first.
struct ViewObject : objc_object {
  using objc_object::objc_object;
  platform::Rect frame;
  int tag = 0;
  std::vector<platform::Retained<platform::UIView>> subviews;
};

struct ImageViewObject final : ViewObject {
  using ViewObject::ViewObject;
  platform::Retained<platform::UIImage> image;
};

/// The class `UIView`.
objc_class* viewClass();

}  // namespace host::views
