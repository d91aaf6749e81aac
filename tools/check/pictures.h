#pragma once

#include <map>
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

/// What the files of the theme's folder are on the device: nothing where they were copied, else why
/// they were not.
using Copies = std::map<std::string, std::optional<host::files::Failure>>;

/// Copies every file that the theme names as a picture, and its sibling, to `device` without a look
/// into it.
Copies copyPictures(const Source& source, const host::files::DeviceRoot& device);

/// Checks the section of pictures, of which `device` has copies. Returns those that some board may
/// ask for.
std::vector<Picture> checkPictures(Theme& theme, const Boards& boards, const Copies& copies,
                                   const host::files::DeviceRoot& device);

}  // namespace tools::check
