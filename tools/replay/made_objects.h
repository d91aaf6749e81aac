#pragma once

// The platform's objects that a scenario describes.

#include <cstdint>
#include <map>

#include "host/keyboard/dictation_view.h"
#include "host/runtime/object.h"
#include "platform/keyboard.h"
#include "scenario/model.h"

namespace tools::replay {

/// An effect of a scenario; it is told again as it was given.
struct GivenEffect final : objc_object {
  GivenEffect(objc_class* cls, scenario::Effect description);
  scenario::Effect given;
};

/// An image that a scenario says is in a view already; nothing is decoded for it.
struct GivenImage final : objc_object {
  explicit GivenImage(scenario::Image description);
  scenario::Image given;
};

platform::Retained<platform::UIKBTree> makeKeyplane(
    const scenario::Nullable<scenario::Keyplane>& given);
platform::Retained<platform::UIKBTree> makeKey(const scenario::Nullable<scenario::Key>& given);
platform::Retained<platform::UIKBRenderTraits> makeTraits(
    const scenario::Nullable<scenario::Traits>& given);
platform::Retained<platform::UIKBRenderTraits> makeBackgroundTraits(
    const scenario::Nullable<scenario::BackgroundTraits>& given);

/// Makes views. Images that are given the same id are one object.
class ViewMaker {
 public:
  platform::Retained<platform::UIView> make(const scenario::View& given);
  platform::Retained<platform::UIKeyboardDicationBackgroundGradientView> makeDictationView(
      const scenario::View& given);

 private:
  void fill(host::views::ViewObject& view, const scenario::View& given);
  platform::Retained<platform::UIImage> image(const scenario::Nullable<scenario::Image>& given);

  std::map<std::int64_t, platform::Retained<platform::UIImage>> imagesById_;
};

}  // namespace tools::replay
