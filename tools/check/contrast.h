#pragma once

#include "check/boards.h"
#include "check/pictures.h"
#include "check/styles.h"
#include "check/theme.h"

namespace tools::check {

/// Draws every key in every state but disabled as the library dresses it, without its text, and
/// tells where the text would hardly stand out. The device must have the theme (putTheme).
void checkContrast(Theme& theme, const Boards& boards, const LastWords& words,
                   std::span<const Picture> pictures);

}  // namespace tools::check
