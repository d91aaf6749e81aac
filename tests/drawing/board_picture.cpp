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

std::variant<std::string, Glyph> markOf(const boards::Key& key) {
  switch (key.shape) {
    case Shape::shift:
      return Glyph::shift;
    case Shape::shift_on:
      return Glyph::shift_on;
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

drawing::KeyPicture keyPicture(const boards::PlacedKey& placed, const boards::KeyLook& look,
                               double corner_radius) {
  drawing::KeyPicture picture;
  picture.frame = placed.face;
  picture.corner_radius_pt = corner_radius;
  picture.background = fill(look.gradient);
  picture.edge = drawing::EdgeEffect{color(look.edge_color)};
  picture.symbol = drawing::Symbol{
      markOf(*placed.key),
      {std::string(look.font_name), look.font_size_pt, color(look.text_color), {}, {}}};
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
  for (const boards::PlacedKey& key : placed.keys) {
    const bool lit = key.key->shape == Shape::shift_on;
    const int shown = static_cast<int>(lit ? boards::KeyState::pressed : state);
    picture.keys.push_back(keyPicture(key, boards::systemKeyLook(key.key->role, look, shown),
                                      board.metrics(orientation).corner_radius));
  }
  return picture;
}

}  // namespace host
