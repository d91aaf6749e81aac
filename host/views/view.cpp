#include "host/views/view.h"

#include <algorithm>
#include <cstddef>

#include "host/runtime/class_table.h"

namespace host::views {

objc_class* viewClass() {
  return runtime::defineClass("UIView");
}

}  // namespace host::views

namespace platform {

using host::runtime::as;
using host::views::ImageViewObject;
using host::views::ViewObject;

Rect UIView::frame() const {
  const auto* const view = as<ViewObject>(*this);
  return view ? view->frame : Rect();
}

void UIView::setFrame(const Rect& frame) const {
  if (auto* const view = as<ViewObject>(*this)) view->frame = frame;
}

void UIView::setTag(int tag) const {
  if (auto* const view = as<ViewObject>(*this)) view->tag = tag;
}

UIView UIView::viewWithTag(int tag) const {
  // A stack of its own: how deep views nest is not the host's to decide.
  std::vector<UIView> waiting = {*this};
  while (!waiting.empty()) {
    const UIView next = waiting.back();
    waiting.pop_back();
    const auto* const view = as<ViewObject>(next);
    if (!view) continue;
    if (view->tag == tag) return next;
    for (auto subview = view->subviews.rbegin(); subview != view->subviews.rend(); ++subview) {
      waiting.push_back(subview->get());
    }
  }
  return {};
}

void UIView::insertSubview(UIView subview, std::size_t index) const {
  auto* const view = as<ViewObject>(*this);
  if (!view || !subview) return;
  const auto place = std::min(index, view->subviews.size());
  view->subviews.emplace(view->subviews.begin() + static_cast<std::ptrdiff_t>(place), subview);
}

Retained<UIImageView> UIImageView::initWithFrame(const Rect& frame) {
  auto* const cls = host::runtime::defineClass("UIImageView", host::views::viewClass());
  auto made = host::runtime::makeRetained<UIImageView, ImageViewObject>(cls);
  made->setFrame(frame);
  return made;
}

void UIImageView::setImage(UIImage image) const {
  if (auto* const view = as<ImageViewObject>(*this)) view->image = Retained(image);
}

}  // namespace platform
