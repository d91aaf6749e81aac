#include "host/render/picture.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "host/drawing/key_bitmap.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/traits.h"
#include "host/render/key_cache.h"
#include "host/render/named_look.h"
#include "host/render/view_images.h"
#include "host/runtime/object.h"

namespace host::render {

using runtime::as;

namespace {

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

/// A font's name, of which each key keeps a copy. No font has a longer one, so that the system font
/// takes its place as it does for any other name that no font has.
std::string fontNameOf(const std::optional<std::string>& name) {
  constexpr std::size_t kLongest = 512;
  return name && name->size() <= kLongest ? *name : "";
}

/// None for a key that has no style for its text.
std::optional<drawing::Symbol> symbolOf(platform::UIKBTextStyle handle,
                                        std::variant<std::string, drawing::Glyph> mark) {
  const auto* const style = as<keyboard::TextStyleObject>(handle);
  if (!style) return std::nullopt;
  drawing::Symbol symbol;
  symbol.mark = std::move(mark);
  symbol.style.font_name = fontNameOf(style->fontName);
  symbol.style.size_pt = style->fontSize_pt;
  symbol.style.color = textColorNamed(style->textColor);
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

platform::UIView backgroundView() {
  return platform::UIView(keyboard::keyboard().layoutObject().backgroundView.get().get());
}

/// All but the keys.
drawing::KeyboardPicture boardOf(const LiveKeyplane& keyplane, double scale) {
  drawing::KeyboardPicture picture;
  picture.size = keyplane.placed.size;
  picture.background_regions = keyplane.placed.backgrounds;
  picture.scale = scale;
  const auto traits =
      keyboard::askBackgroundTraits(keyboard::keyboard().factory.get(), keyplane.tree.get());
  if (const auto* const object = as<keyboard::TraitsObject>(traits)) {
    picture.background = fillOf(object->backgroundGradient.get());
  }
  picture.background_images = imagesIn(backgroundView());
  return picture;
}

/// A key goes through its bitmap also when it has just been drawn, so that it looks the same the
/// next time, when the picture is made of its pixels.
images::SharedBitmap drawAndKeep(const drawing::KeyPicture& key, const LiveKey& live,
                                 const drawing::KeyboardPicture& board, drawing::Fonts& fonts,
                                 KeyCache& cache) {
  auto bitmap = drawing::drawAlone(key, board.size, board.scale, fonts);
  if (!bitmap) return nullptr;
  auto shared = std::make_shared<const images::PlacedBitmap>(*std::move(bitmap));
  cache.put(live, shared);
  return shared;
}

}  // namespace

drawing::KeyboardPicture pictureOf(const LiveKeyplane& keyplane, double scale) {
  const platform::NSAutoreleasePool pool;
  drawing::KeyboardPicture picture = boardOf(keyplane, scale);
  for (const LiveKey& key : keyplane.keys) picture.keys.push_back(pictureOf(key, keyplane));
  return picture;
}

drawing::KeyboardPicture pictureOf(const LiveKeyplane& keyplane, double scale,
                                   drawing::Fonts& fonts) {
  const platform::NSAutoreleasePool pool;
  auto cache = KeyCache::open(keyplane, scale);
  if (!cache) return pictureOf(keyplane, scale);
  drawing::KeyboardPicture picture = boardOf(keyplane, scale);
  for (const LiveKey& key : keyplane.keys) {
    auto drawn = cache->find(key);
    if (!drawn) drawn = drawAndKeep(pictureOf(key, keyplane), key, picture, fonts, *cache);
    if (drawn) picture.drawn_keys.push_back(std::move(drawn));
  }
  cache->write();
  return picture;
}

std::optional<std::string> backgroundPath() {
  return imagePathIn(backgroundView());
}

}  // namespace host::render
