#pragma once

#include <string_view>

#include "platform/graphics.h"

namespace prismal {

/// What the library adds to the platform's images.
namespace HiResAdditions {

/// The picture at device path `path`: on a screen of two pixels a point its "@2x" sibling at scale
/// 2 if there is such a file, readable or not, else the file itself at scale 1. Null when that
/// can't be decoded.
platform::Retained<platform::UIImage> initWithContentsOfFile2(std::string_view path);

}  // namespace HiResAdditions

}  // namespace prismal
