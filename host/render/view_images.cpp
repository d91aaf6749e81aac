#include "host/render/view_images.h"

#include "host/runtime/object.h"
#include "host/views/image.h"
#include "host/views/view.h"

namespace host::render {

using runtime::as;

namespace {

/// Null for a view that shows no image.
const views::BitmapObject* bitmapOf(platform::UIView handle) {
  const auto* const view = as<views::ImageViewObject>(handle);
  const auto* const image = view ? as<views::ImageObject>(view->image.get()) : nullptr;
  return image ? image->bitmap() : nullptr;
}

/// Hands every image in the tree of `view`, whose superview has its origin at `origin`, to `take`
/// together with where it lies.
template <class Take>
void forEveryImage(platform::UIView handle, drawing::Point origin, const Take& take) {
  const auto* const view = as<views::ViewObject>(handle);
  if (!view) return;
  const drawing::Rect frame{origin.x + view->frame.x, origin.y + view->frame.y, view->frame.width,
                            view->frame.height};
  if (const auto* const bitmap = bitmapOf(handle)) take(*bitmap, frame);
  for (const auto& subview : view->subviews) {
    forEveryImage(subview.get(), {frame.x, frame.y}, take);
  }
}

}  // namespace

std::vector<drawing::BackgroundImage> imagesIn(platform::UIView view) {
  std::vector<drawing::BackgroundImage> images;
  forEveryImage(view, {}, [&](const views::BitmapObject& bitmap, const drawing::Rect& frame) {
    images.push_back({&bitmap.bitmap, frame});
  });
  return images;
}

std::optional<std::string> imagePathIn(platform::UIView view) {
  std::optional<std::string> path;
  forEveryImage(view, {}, [&](const views::BitmapObject& bitmap, const drawing::Rect&) {
    if (!path) path = bitmap.path;
  });
  return path;
}

}  // namespace host::render
