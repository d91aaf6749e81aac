#include "check/text_contrast.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "host/drawing/draw.h"
#include "host/drawing/font_traits.h"

namespace tools::check {

using host::drawing::KeyPicture;
using host::drawing::Rect;
using host::drawing::Rgba;
using host::drawing::Symbol;

namespace {

/// The light of a component, 0 to 1, of which pixels hold the 256 steps that the eye finds even.
double linear(double component) {
  return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

const std::array<double, 256>& linearSteps() {
  static const auto steps = [] {
    std::array<double, 256> made{};
    for (std::size_t i = 0; i < made.size(); ++i) made[i] = linear(static_cast<double>(i) / 255);
    return made;
  }();
  return steps;
}

double luminance(double red, double green, double blue) {
  const auto step = [](double value) {
    return linearSteps()[static_cast<std::size_t>(std::lround(std::clamp(value, 0.0, 255.0)))];
  };
  return 0.2126 * step(red) + 0.7152 * step(green) + 0.0722 * step(blue);
}

double contrastOnPixel(host::images::Pixel pixel, const Rgba& text) {
  const auto part = [&](int shift) { return static_cast<double>(pixel >> shift & 0xff); };
  const auto mixed = [&](double color, int shift) {
    return 255 * color * text.alpha + part(shift) * (1 - text.alpha);
  };
  const double behind = luminance(part(16), part(8), part(0));
  const double front = luminance(mixed(text.red, 16), mixed(text.green, 8), mixed(text.blue, 0));
  return (std::max(front, behind) + 0.05) / (std::min(front, behind) + 0.05);
}

/// The middle of `area`, as large as a text of that style is at the most.
Rect boxOf(const Symbol& symbol, const Rect& area) {
  constexpr double kWidthOfCharacter = 0.6;  // of an em
  const auto* const text = std::get_if<std::string>(&symbol.mark);
  const double em = symbol.style.size_pt;
  const double wide = text ? static_cast<double>(text->size()) * kWidthOfCharacter * em : em;
  const double width = std::fmin(area.width, std::fmax(1, std::round(wide)));
  const double height = std::fmin(area.height, std::fmax(1, std::round(0.8 * em)));
  return {std::round(area.x + (area.width - width) / 2),
          std::round(area.y + (area.height - height) / 2), width, height};
}

Rect moved(const Rect& rect, const Rect& box) {
  return {rect.x - box.x, rect.y - box.y, rect.width, rect.height};
}

bool isBold(const std::string& font) {
  constexpr std::string_view kBold[] = {"Bold", "ExtraBold", "Black"};
  return std::ranges::find(kBold, host::drawing::traitsOf(font).weight) != std::end(kBold);
}

}  // namespace

std::optional<double> contrastOn(const host::images::Bitmap& pixels, Rgba text) {
  std::vector<double> ratios;
  for (const host::images::Pixel pixel : pixels.pixels) {
    if (pixel >> 24 == 0xff) ratios.push_back(contrastOnPixel(pixel, text));
  }
  if (ratios.empty()) return std::nullopt;
  const auto tenth = ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 10);
  std::ranges::nth_element(ratios, tenth);
  return *tenth;
}

double neededContrast(const Symbol& symbol) {
  constexpr double kText = 4.5;
  constexpr double kLarge = 3;
  if (!std::holds_alternative<std::string>(symbol.mark)) return kLarge;
  const bool isLarge =
      symbol.style.size_pt >= 18 || (symbol.style.size_pt >= 14 && isBold(symbol.style.font_name));
  return isLarge ? kLarge : kText;
}

SymbolBoxes boxesOf(const KeyPicture& key) {
  SymbolBoxes boxes;
  Rect upper = key.frame;
  Rect lower = key.frame;
  if (key.symbol && key.secondary_symbol) {
    upper.height = lower.height = key.frame.height / 2;
    lower.y += upper.height;
  }
  if (key.symbol) boxes.symbol = boxOf(*key.symbol, lower);
  if (key.secondary_symbol) boxes.secondary = boxOf(*key.secondary_symbol, upper);
  return boxes;
}

std::optional<host::images::Bitmap> drawBehind(const host::drawing::KeyboardPicture& board,
                                               const KeyPicture& key, const Rect& box,
                                               host::drawing::Fonts& fonts) {
  host::drawing::KeyboardPicture part = board;
  part.size = {box.width, box.height};
  // Without a region the whole picture is one, and that is no longer the board.
  if (part.background_regions.empty())
    part.background_regions = {{0, 0, board.size.width, board.size.height}};
  for (Rect& region : part.background_regions) region = moved(region, box);
  for (auto& image : part.background_images) image.frame = moved(image.frame, box);
  KeyPicture face = key;
  face.frame = moved(key.frame, box);
  face.symbol.reset();
  face.secondary_symbol.reset();
  part.keys = {std::move(face)};
  return host::drawing::draw(part, fonts);
}

}  // namespace tools::check
