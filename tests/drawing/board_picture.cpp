#include "drawing/board_picture.h"

namespace host {
namespace {

using boards::Shape;
using drawing::Glyph;

drawing::Rgba color(std::string_view name) {
  return boards::systemColor(name).value_or(drawing::Rgba{1, 0, 1, 1});
}

drawing::Fill fill(std::string_view name) {
  const boards::NamedGradient* gradient = boards::systemGradient(name);
  return {color(gradient->start), color(gradient->end)};
}

std::variant<std::string, Glyph> markOf(const boards::Key& key, boards::KeyState state) {
  switch (boards::shapeInState(key.shape, static_cast<int>(state))) {
    case Shape::shift:
      return Glyph::shift;
    case Shape::shift_on:
      return Glyph::shift_on;
    case Shape::shift_locked:
      return Glyph::shift_locked;
    case Shape::delete_left:
      return Glyph::delete_left;
    case Shape::globe:
      return Glyph::globe;
    case Shape::microphone:
      return Glyph::microphone;
    case Shape::dismiss:
      return Glyph::dismiss;
    case Shape::text:
      break;
  }
  return std::string(key.label);
}

drawing::TextStyle textStyle(const boards::KeyLook& look) {
  return {std::string(look.font_name), look.font_size_pt, color(look.text_color), {}, {}};
}

drawing::KeyPicture keyPicture(const boards::PlacedKey& placed, boards::KeyState state,
                               const boards::KeyLook& look, double corner_radius) {
  drawing::KeyPicture picture;
  picture.frame = placed.face;
  picture.corner_radius_pt = corner_radius;
  picture.background = fill(look.gradient);
  picture.edge = drawing::EdgeEffect{color(look.edge_color)};
  picture.symbol = drawing::Symbol{markOf(*placed.key, state), textStyle(look)};
  if (!placed.key->secondary_label.empty()) {
    auto& secondary = picture.secondary_symbol.emplace(*picture.symbol);
    secondary.mark = std::string(placed.key->secondary_label);
    secondary.style.size_pt = look.secondary_font_size_pt;
  }
  return picture;
}

}  // namespace

drawing::KeyboardPicture systemPicture(const boards::Board& board, boards::Plane plane,
                                       boards::Orientation orientation, boards::Variant variant,
                                       boards::Look look, double scale, boards::KeyState state) {
  const boards::PlacedKeyplane placed = boards::place(board, plane, orientation, variant);
  drawing::KeyboardPicture picture;
  picture.size = placed.size;
  picture.scale = scale;
  picture.background = fill(boards::systemBackgroundGradient(look));
  const auto family = board.is_tablet ? boards::Family::tablet : boards::Family::phone;
  for (const boards::PlacedKey& key : placed.keys) {
    const boards::KeyKind kind{key.key->role, boards::letteringOf(*key.key)};
    picture.keys.push_back(
        keyPicture(key, state, boards::systemKeyLook(kind, look, family, static_cast<int>(state)),
                   board.metrics(orientation).corner_radius));
  }
  return picture;
}

}  // namespace host
