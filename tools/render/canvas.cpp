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
}

void Canvas::put(std::size_t cell, const Bitmap& picture) {
  const auto& frame = cells_[cell].frame;
  const int left = static_cast<int>(std::lround(frame.x * scale_));
  const int top = static_cast<int>(std::lround(frame.y * scale_));
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
