#pragma once

#include "platform/graphics.h"

namespace prismal {

/// Marks the image views that show theme backgrounds.
inline constexpr int PMBackgroundImageViewTag = 70927;

/// Shows `image` (null: nothing) in the tagged image view of `view`, which is made at the back of
/// `view` when there is none yet. The image view takes the frame of `view`, not its bounds.
void showBackgroundImage(platform::UIView view, platform::UIImage image);

}  // namespace prismal
