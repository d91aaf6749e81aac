#pragma once

#include <span>

#include "check/boards.h"
#include "check/pictures.h"
#include "check/theme.h"

namespace tools::check {

/// Shows every keyplane on every device, and the dictation panel, and asks the library which
/// picture lies there: tells of pictures that never do, and of those that are stretched.
void checkPictureUse(Theme& theme, const Boards& boards, std::span<const Picture> pictures);

}  // namespace tools::check
