#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/boards.h"
#include "check/theme.h"
#include "host/files/device_root.h"
#include "host/images/bitmap.h"

namespace tools::check {

struct PixelCount {
  int width = 0;
  int height = 0;
  friend bool operator==(PixelCount, PixelCount) = default;
};

/// A picture that a theme names under one background key.
struct Picture {
  std::string key;
  Place place;       ///< of its path
  std::string path;  ///< as the theme has it
  /// Where it lies on the device; empty: the library finds none.
  std::string device_path;
  /// Of the file, and of its sibling, as far as they are there.
  std::vector<PixelCount> sizes;
  /// The sibling where it is more than the same picture sharper; else null.
  std::shared_ptr<const host::images::Bitmap> other_sibling;
};

/// Checks the section of pictures, and copies those that some board may ask for to `device`.
/// Returns these.
std::vector<Picture> checkPictures(Theme& theme, const Boards& boards,
                                   const host::files::DeviceRoot& device);

}  // namespace tools::check
