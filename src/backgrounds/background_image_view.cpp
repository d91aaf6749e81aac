#include "backgrounds/background_image_view.h"

namespace prismal {

using platform::UIImageView;
using platform::UIView;

void showBackgroundImage(UIView view, platform::UIImage image) {
  if (const UIView tagged = view.viewWithTag(PMBackgroundImageViewTag)) {
    UIImageView(tagged.get()).setImage(image);
    tagged.setFrame(view.frame());
    return;
  }
  const auto made = UIImageView::initWithFrame(view.frame());
  made->setImage(image);
  made->setTag(PMBackgroundImageViewTag);
  view.insertSubview(made.get(), 0);
}

}  // namespace prismal
