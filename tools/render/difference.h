#pragma once

#include <cstddef>

#include "host/images/bitmap.h"

namespace tools::render {

/// What differs between two pictures of one size.
struct Difference {
  std::size_t pixels = 0;
  /// The first picture, pale and without colour, with every pixel that differs marked.
  host::images::Bitmap marked;
};

/// Any difference of any channel counts.
Difference differenceOf(const host::images::Bitmap& one, const host::images::Bitmap& other);

}  // namespace tools::render
