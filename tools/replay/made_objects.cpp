#include "replay/made_objects.h"

#include <string>
#include <utility>
#include <vector>

#include "host/keyboard/gradient.h"
#include "host/keyboard/traits.h"
#include "host/keyboard/tree.h"
#include "host/runtime/class_table.h"
#include "host/views/view.h"

namespace tools::replay {

using host::runtime::as;
using host::runtime::makeRetained;
using platform::Object;
using platform::Retained;
using platform::UIKBGradient;
using platform::UIKBRenderTraits;
using platform::UIKBTextStyle;
using platform::UIKBTree;
using scenario::Nullable;

namespace {

struct GradientColors {
  host::keyboard::GradientObject::Colors operator()(const scenario::FlatGradient& given) const {
    return host::keyboard::FlatColors{given.color};
  }
  host::keyboard::GradientObject::Colors operator()(const scenario::LinearGradient& given) const {
    return host::keyboard::LinearColors{given.startColor, given.endColor};
  }
  host::keyboard::GradientObject::Colors operator()(const scenario::NamedGradient& given) const {
    return host::keyboard::OwnGradient{given.name};
  }
};

Retained<UIKBGradient> makeGradient(const Nullable<scenario::Gradient>& given) {
  if (!given) return {};
  return makeRetained<UIKBGradient, host::keyboard::GradientObject>(
      std::visit(GradientColors(), *given));
}

Retained<UIKBTextStyle> makeTextStyle(const Nullable<scenario::TextStyle>& given) {
  if (!given) return {};
  auto style = makeRetained<UIKBTextStyle, host::keyboard::TextStyleObject>();
  auto& object = *as<host::keyboard::TextStyleObject>(style.get());
  object.textColor = given->textColor;
  object.etchColor = given->etchColor;
  object.fontName = given->fontName;
  object.etchOffset = {given->etchOffset[0], given->etchOffset[1]};
  return style;
}

Retained<Object> makeEffect(const scenario::Effect& given) {
  objc_class* const cls = given.superclass
                              ? host::keyboard::declareEffectClass(
                                    given.className, host::keyboard::effectClass(*given.superclass))
                              : host::keyboard::effectClass(given.className);
  return makeRetained<Object, GivenEffect>(cls, given);
}

Retained<platform::NSArray> makeEffects(const Nullable<std::vector<scenario::Effect>>& given,
                                        bool isMutable) {
  if (!given) return {};
  std::vector<Retained<Object>> effects;
  for (const scenario::Effect& effect : *given) effects.push_back(makeEffect(effect));
  return makeRetained<platform::NSArray, host::keyboard::ArrayObject>(std::move(effects),
                                                                      isMutable);
}

}  // namespace

GivenEffect::GivenEffect(objc_class* cls, scenario::Effect description)
    : objc_object(cls), given(std::move(description)) {}

GivenImage::GivenImage(scenario::Image description)
    : objc_object(host::runtime::defineClass("UIImage")), given(std::move(description)) {}

Retained<UIKBTree> makeKeyplane(const Nullable<scenario::Keyplane>& given) {
  if (!given) return {};
  auto keyplane = makeRetained<UIKBTree, host::keyboard::TreeObject>();
  auto& object = *as<host::keyboard::TreeObject>(keyplane.get());
  object.name = given->name;
  object.visualStyle = given->visualStyle;
  object.type = given->type;
  object.isLetters = given->isLetters;
  object.isShiftKeyplane = given->isShiftKeyplane;
  return keyplane;
}

Retained<UIKBTree> makeKey(const Nullable<scenario::Key>& given) {
  if (!given) return {};
  auto key = makeRetained<UIKBTree, host::keyboard::TreeObject>();
  auto& object = *as<host::keyboard::TreeObject>(key.get());
  object.name = given->name;
  object.displayType = given->displayType;
  object.displayTypeHint = given->displayTypeHint;
  object.displayRowHint = given->displayRowHint;
  object.state = given->state;
  return key;
}

Retained<UIKBRenderTraits> makeTraits(const Nullable<scenario::Traits>& given) {
  if (!given) return {};
  auto traits = makeRetained<UIKBRenderTraits, host::keyboard::TraitsObject>();
  auto& object = *as<host::keyboard::TraitsObject>(traits.get());
  object.renderEffects = makeEffects(given->renderEffects, given->renderEffectsMutable);
  object.backgroundGradient = makeGradient(given->backgroundGradient);
  object.symbolStyle = makeTextStyle(given->symbolStyle);
  object.secondarySymbolStyle = makeTextStyle(given->secondarySymbolStyle);
  return traits;
}

Retained<UIKBRenderTraits> makeBackgroundTraits(const Nullable<scenario::BackgroundTraits>& given) {
  if (!given) return {};
  auto traits = makeRetained<UIKBRenderTraits, host::keyboard::TraitsObject>();
  as<host::keyboard::TraitsObject>(traits.get())->backgroundGradient =
      makeGradient(given->backgroundGradient);
  return traits;
}

Retained<platform::UIView> ViewMaker::make(const scenario::View& given) {
  objc_class* const root = host::views::viewClass();
  if (given.className == "UIImageView") {
    auto made = platform::UIImageView::initWithFrame({});
    as<host::views::ImageViewObject>(made.get())->image = image(given.image);
    fill(*as<host::views::ViewObject>(made.get()), given);
    return Retained<platform::UIView>(made.get());
  }
  auto made = makeRetained<platform::UIView, host::views::ViewObject>(
      given.className == "UIView" ? root
                                  : host::runtime::makeAnonymousClass(given.className, root));
  fill(*as<host::views::ViewObject>(made.get()), given);
  return made;
}

Retained<platform::UIKeyboardDicationBackgroundGradientView> ViewMaker::makeDictationView(
    const scenario::View& given) {
  auto made = makeRetained<platform::UIKeyboardDicationBackgroundGradientView,
                           host::keyboard::DictationViewObject>(given.className);
  fill(*as<host::views::ViewObject>(made.get()), given);
  return made;
}

void ViewMaker::fill(host::views::ViewObject& view, const scenario::View& given) {
  view.tag = given.tag;
  view.frame = {given.frame[0], given.frame[1], given.frame[2], given.frame[3]};
  for (const scenario::View& subview : given.subviews) view.subviews.push_back(make(subview));
}

Retained<platform::UIImage> ViewMaker::image(const Nullable<scenario::Image>& given) {
  if (!given) return {};
  auto made = makeRetained<platform::UIImage, GivenImage>(*given);
  if (!given->id) return made;
  return imagesById_.emplace(*given->id, std::move(made)).first->second;
}

}  // namespace tools::replay
