#pragma once

// A keyboard picture as data: what is drawn where, with every name already resolved but those of
// fonts. Lengths are points; `draw` alone knows pixels.

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/drawing/plain.h"
#include "host/images/placed_bitmap.h"

namespace host::drawing {

/// The longest side of a picture, in pixels.
inline constexpr int kMaxSide = 16384;

/// A vertical linear gradient over the filled shape; flat when both ends are equal.
struct Fill {
  Rgba top;
  Rgba bottom;
  static constexpr Fill flat(Rgba color) { return {color, color}; }
  constexpr bool isFlat() const { return top == bottom; }
  friend constexpr bool operator==(const Fill&, const Fill&) = default;
};

/// The bottom edge of a key: what shows of a copy of the face moved down by `depth_pt`.
struct EdgeEffect {
  Rgba color;
  double depth_pt = 1;
};

/// The symbols that are drawn and not set in a font.
enum class Glyph { shift, shift_on, shift_locked, delete_left, globe, microphone, dismiss };

struct TextStyle {
  /// A PostScript name, full name, family, or family and style joined by "-". An unknown name
  /// stands for the system font in the weight and slant that the name hints at.
  std::string font_name;
  /// Of the em square; a drawn glyph takes the optical size of text of this size.
  double size_pt = 16;
  Rgba color;
  /// Drawn once beneath the symbol, displaced by `etch_offset_pt`.
  std::optional<Rgba> etch_color;
  Point etch_offset_pt;
};

struct Symbol {
  std::variant<std::string, Glyph> mark;  // UTF-8 text, or a glyph
  TextStyle style;
};

struct KeyPicture {
  Rect frame;  // the face, gaps already taken off
  double corner_radius_pt = 5;
  /// None: what lies behind the key shows.
  std::optional<Fill> background;
  std::optional<EdgeEffect> edge;
  std::optional<Symbol> symbol;
  /// Stands above `symbol`, which then moves down.
  std::optional<Symbol> secondary_symbol;
};

/// An image stretched over `frame`. The bitmap is not owned and must live until `draw` returns.
struct BackgroundImage {
  const images::Bitmap* bitmap = nullptr;
  Rect frame;
};

struct KeyboardPicture {
  Size size;
  double scale = 1;  // pixels a point
  /// None: transparent.
  std::optional<Fill> background;
  /// What `background` fills, each region from its own top to its own bottom. None of them: the
  /// whole board.
  std::vector<Rect> background_regions;
  std::vector<BackgroundImage> background_images;  // from the backmost
  std::vector<KeyPicture> keys;                    // in drawing order
  /// Keys that are pixels already, in drawing order, above `keys`. None is null.
  std::vector<images::SharedBitmap> drawn_keys;
};

}  // namespace host::drawing
