#include "render/canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/drawing/draw.h"
#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"

namespace tools::render {

namespace drawing = host::drawing;
using host::images::Bitmap;
using host::images::Pixel;

namespace {

constexpr drawing::Rgba kTable{0.965, 0.965, 0.972, 1};
constexpr drawing::Rgba kInk{0.33, 0.35, 0.39, 1};
constexpr Pixel kHairline = 0xffc9ccd2;

/// A text without a key around it.
drawing::KeyPicture captionOf(const Cell& cell) {
  drawing::KeyPicture text;
  text.frame = {cell.frame.x, cell.frame.bottom(), cell.frame.width, kCaptionHeight};
  drawing::Symbol symbol;
  symbol.mark = cell.caption;
  symbol.style.font_name = "Inter-Regular";
  symbol.style.size_pt = 12;
  symbol.style.color = kInk;
  text.symbol = std::move(symbol);
  return text;
}

/// Where pixels of a cell's picture lie.
struct Place {
  int left, top, right, bottom;
};

Place placeOf(const Cell& cell, double scale) {
  const auto pixels = [&](double points) { return static_cast<int>(std::lround(points * scale)); };
  return {pixels(cell.frame.x), pixels(cell.frame.y), pixels(cell.frame.right()),
          pixels(cell.frame.bottom())};
}

/// A line of one pixel just outside `place`: it tells pictures apart that have gaps themselves, as
/// a split keyboard has.
void drawHairline(Bitmap& table, const Place& place) {
  for (const int y : {place.top - 1, place.bottom}) {
    Pixel* const row = table.row(y);
    std::fill(row + place.left - 1, row + place.right + 1, kHairline);
  }
  for (int y = place.top; y < place.bottom; ++y) {
    table.row(y)[place.left - 1] = table.row(y)[place.right] = kHairline;
  }
}

/// `above` laid over the opaque `below`.
Pixel over(Pixel above, Pixel below) {
  const Pixel rest = 255 - (above >> 24);
  if (rest == 0) return above;
  const auto mix = [&](int shift) {
    return (above >> shift & 0xff) + host::images::premultiplied(below >> shift & 0xff, rest);
  };
  return 0xff000000 | mix(16) << 16 | mix(8) << 8 | mix(0);
}

}  // namespace

Canvas::Canvas(drawing::Size size, double scale, std::vector<Cell> cells)
    : scale_(scale), cells_(std::move(cells)) {
  drawing::KeyboardPicture table;
  table.size = size;
  table.scale = scale;
  table.background = drawing::Fill::flat(kTable);
  for (const Cell& cell : cells_) table.keys.push_back(captionOf(cell));
  drawing::Fonts fonts;
  if (auto drawn = drawing::draw(table, fonts)) bitmap_ = *std::move(drawn);
  if (!bitmap_.isValid()) return;
  for (const Cell& cell : cells_) drawHairline(bitmap_, placeOf(cell, scale_));
}

void Canvas::put(std::size_t cell, const Bitmap& picture) {
  const Place place = placeOf(cells_[cell], scale_);
  const int left = place.left;
  const int top = place.top;
  const int width = std::min(picture.width, bitmap_.width - left);
  const int height = std::min(picture.height, bitmap_.height - top);
  for (int y = 0; y < height; ++y) {
    const Pixel* const from = picture.row(y);
    Pixel* const to = bitmap_.row(top + y) + left;
    std::transform(from, from + std::max(width, 0), to, to, over);
  }
}

Bitmap sideBySide(std::span<const Bitmap> pictures, std::span<const std::string> captions,
                  double scale) {
  const double width = pictures.front().width / scale;
  const double height = pictures.front().height / scale;
  std::vector<Cell> cells;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    const double x = kGap + static_cast<double>(i) * (width + kGap);
    cells.push_back({{x, kGap, width, height}, captions[i]});
  }
  const drawing::Size size{cells.back().frame.right() + kGap, kGap + height + kCaptionHeight};
  Canvas canvas(size, scale, std::move(cells));
  for (std::size_t i = 0; i < pictures.size(); ++i) canvas.put(i, pictures[i]);
  return canvas.take();
}

}  // namespace tools::render
