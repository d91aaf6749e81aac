#include "check/picture_likeness.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace tools::check {

using host::images::Bitmap;

namespace {

constexpr int kCells = 16;  // a side
constexpr int kComponents = 4;

struct Cell {
  std::array<std::uint64_t, kComponents> sums{};
  std::uint64_t pixels = 0;

  int mean(std::size_t component) const {
    return pixels == 0 ? 0 : static_cast<int>(sums[component] / pixels);
  }
};
using Cells = std::array<Cell, std::size_t{kCells} * kCells>;

Cells cellsOf(const Bitmap& picture) {
  Cells cells;
  for (int y = 0; y < picture.height; ++y) {
    const auto row = static_cast<std::size_t>(std::int64_t{y} * kCells / picture.height);
    for (int x = 0; x < picture.width; ++x) {
      const auto column = static_cast<std::size_t>(std::int64_t{x} * kCells / picture.width);
      Cell& cell = cells[row * kCells + column];
      const host::images::Pixel pixel = picture.at(x, y);
      for (std::size_t i = 0; i < kComponents; ++i) cell.sums[i] += pixel >> (8 * i) & 0xff;
      ++cell.pixels;
    }
  }
  return cells;
}

}  // namespace

bool showsOther(const Bitmap& one, const Bitmap& other) {
  // Rounding and the edges of cells make less of a difference, between pictures of some size.
  constexpr int kSame = 12;
  const Cells left = cellsOf(one);
  const Cells right = cellsOf(other);
  return !std::ranges::equal(left, right, [](const Cell& a, const Cell& b) {
    for (std::size_t i = 0; i < kComponents; ++i) {
      if (a.pixels > 0 && b.pixels > 0 && std::abs(a.mean(i) - b.mean(i)) > kSame) return false;
    }
    return true;
  });
}

}  // namespace tools::check
