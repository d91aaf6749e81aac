#include "host/render/picture.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "host/keyboard/boards/system_look.h"
#include "host/keyboard/gradient.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/traits.h"
#include "host/runtime/object.h"
#include "host/views/color.h"
#include "host/views/image.h"
#include "host/views/view.h"

namespace host::render {

using runtime::as;

namespace {

/// What text is drawn in when nobody knows its colour: what a fresh context has. So keys keep their
/// labels when the master switch takes a theme's own names away.
constexpr drawing::Rgba kContextColor{0, 0, 0, 1};

/// The colour that the keyboard knows by that name; none when it knows none.
std::optional<drawing::Rgba> colorNamed(const std::optional<std::string>& name) {
  if (!name) return std::nullopt;
  const auto* const color = as<views::ColorObject>(platform::UIKBGetNamedColor(*name));
  if (!color) return std::nullopt;
  const auto& c = color->components;
  return drawing::Rgba{c[0], c[1], c[2], c[3]};
}

/// Towards this a colour fades without another tint.
drawing::Rgba clear(drawing::Rgba color) {
  color.alpha = 0;
  return color;
}

std::optional<drawing::Fill> fillBetween(const std::string& start, const std::string& end) {
  const auto top = colorNamed(start);
  const auto bottom = colorNamed(end);
  if (!top && !bottom) return std::nullopt;
  return drawing::Fill{top ? *top : clear(*bottom), bottom ? *bottom : clear(*top)};
}

struct FillOf {
  std::optional<drawing::Fill> operator()(const keyboard::FlatColors& colors) const {
    return fillBetween(colors.color, colors.color);
  }
  std::optional<drawing::Fill> operator()(const keyboard::LinearColors& colors) const {
    return fillBetween(colors.start, colors.end);
  }
  /// A theme may have defined one of the platform's own gradients anew, so it is asked for by name;
  /// when the answer is the platform's own, its colours stand in the system look.
  std::optional<drawing::Fill> operator()(const keyboard::OwnGradient& own) const {
    const auto asked = keyboard::askNamedGradient(own.name);
    const auto* const gradient = as<keyboard::GradientObject>(asked);
    if (!gradient) return std::nullopt;
    if (!std::holds_alternative<keyboard::OwnGradient>(gradient->colors)) {
      return std::visit(*this, gradient->colors);
    }
    const auto* const system = boards::systemGradient(own.name);
    if (!system) return std::nullopt;
    return fillBetween(std::string(system->start), std::string(system->end));
  }
};

std::optional<drawing::Fill> fillOf(platform::UIKBGradient handle) {
  const auto* const gradient = as<keyboard::GradientObject>(handle);
  return gradient ? std::visit(FillOf(), gradient->colors) : std::nullopt;
}

std::optional<drawing::Glyph> glyphOf(boards::Shape shape) {
  switch (shape) {
    case boards::Shape::text:
      return std::nullopt;
    case boards::Shape::shift:
      return drawing::Glyph::shift;
    case boards::Shape::shift_on:
      return drawing::Glyph::shift_on;
    case boards::Shape::shift_locked:
      return drawing::Glyph::shift_locked;
    case boards::Shape::delete_left:
      return drawing::Glyph::delete_left;
    case boards::Shape::globe:
      return drawing::Glyph::globe;
    case boards::Shape::microphone:
      return drawing::Glyph::microphone;
    case boards::Shape::dismiss:
      return drawing::Glyph::dismiss;
  }
  return std::nullopt;
}

/// None for a key that has no style for its text.
std::optional<drawing::Symbol> symbolOf(platform::UIKBTextStyle handle,
                                        std::variant<std::string, drawing::Glyph> mark) {
  const auto* const style = as<keyboard::TextStyleObject>(handle);
  if (!style) return std::nullopt;
  drawing::Symbol symbol;
  symbol.mark = std::move(mark);
  symbol.style.font_name = style->fontName.value_or("");
  symbol.style.size_pt = style->fontSize_pt;
  symbol.style.color = colorNamed(style->textColor).value_or(kContextColor);
  symbol.style.etch_color = colorNamed(style->etchColor);
  symbol.style.etch_offset_pt = {style->etchOffset.first, style->etchOffset.second};
  return symbol;
}

std::optional<drawing::EdgeEffect> edgeOf(platform::NSArray effects) {
  const auto edgeClass = platform::Class(keyboard::effectClass("UIKBEdgeEffect"));
  for (std::size_t i = 0; i < effects.count(); ++i) {
    const auto* const effect = as<keyboard::EffectObject>(effects.objectAtIndex(i));
    if (!effect || !effects.objectAtIndex(i).isKindOfClass(edgeClass)) continue;
    if (const auto color = colorNamed(effect->colorName)) return drawing::EdgeEffect{*color};
  }
  return std::nullopt;
}

drawing::KeyPicture pictureOf(const LiveKey& key, const LiveKeyplane& keyplane) {
  const auto traits =
      keyboard::askTraits(keyboard::keyboard().factory.get(), key.tree.get(), keyplane.tree.get());
  drawing::KeyPicture picture;
  picture.frame = key.placed.face;
  picture.corner_radius_pt = keyplane.cornerRadius_pt;
  const auto* const object = as<keyboard::TraitsObject>(traits);
  if (!object) return picture;

  picture.background = fillOf(object->backgroundGradient.get());
  picture.edge = edgeOf(traits.renderEffects());
  const boards::Key& description = *key.placed.key;
  if (const auto glyph = glyphOf(boards::shapeInState(description.shape, key.tree->state()))) {
    picture.symbol = symbolOf(traits.symbolStyle(), *glyph);
  } else {
    picture.symbol = symbolOf(traits.symbolStyle(), std::string(description.label));
  }
  if (!description.secondary_label.empty()) {
    picture.secondary_symbol =
        symbolOf(traits.secondarySymbolStyle(), std::string(description.secondary_label));
  }
  return picture;
}

/// Adds every image below `view`, whose superview has its origin at `origin`.
void addImages(platform::UIView handle, drawing::Point origin,
               std::vector<drawing::BackgroundImage>& images) {
  const auto* const view = as<views::ViewObject>(handle);
  if (!view) return;
  const drawing::Rect frame{origin.x + view->frame.x, origin.y + view->frame.y, view->frame.width,
                            view->frame.height};
  if (const auto* const imageView = as<views::ImageViewObject>(handle)) {
    const auto* const image = as<views::ImageObject>(imageView->image.get());
    if (image && image->bitmap()) images.push_back({&image->bitmap()->bitmap, frame});
  }
  for (const auto& subview : view->subviews) {
    addImages(subview.get(), {frame.x, frame.y}, images);
  }
}

}  // namespace

drawing::KeyboardPicture pictureOf(const LiveKeyplane& keyplane, double scale) {
  const platform::NSAutoreleasePool pool;
  auto& keyboard = keyboard::keyboard();
  drawing::KeyboardPicture picture;
  picture.size = keyplane.placed.size;
  picture.scale = scale;
  const auto traits = keyboard::askBackgroundTraits(keyboard.factory.get(), keyplane.tree.get());
  if (const auto* const object = as<keyboard::TraitsObject>(traits)) {
    picture.background = fillOf(object->backgroundGradient.get());
  }
  addImages(platform::UIView(keyboard.layoutObject().backgroundView.get().get()), {},
            picture.background_images);
  for (const LiveKey& key : keyplane.keys) picture.keys.push_back(pictureOf(key, keyplane));
  return picture;
}

}  // namespace host::render
