#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/drawing/picture.h"
#include "platform/graphics.h"

namespace host::render {

/// The images in the tree of `view`, from the backmost, where they lie on the board that `view`
/// stands on. They belong to the views.
std::vector<drawing::BackgroundImage> imagesIn(platform::UIView view);

/// The device path of the backmost image's file; none without an image.
std::optional<std::string> imagePathIn(platform::UIView view);

}  // namespace host::render
