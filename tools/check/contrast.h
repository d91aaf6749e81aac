#pragma once

#include "check/boards.h"
#include "check/pictures.h"
#include "check/styles.h"
#include "check/theme.h"

namespace tools::check {

/// Draws every key in every state as the library dresses it, without its text, and tells where the
/// text would hardly stand out. Of a disabled key that is told only where the theme gives it its
/// text or face. The device must have the theme (putTheme).
void checkContrast(Theme& theme, const Boards& boards, const RuleUse& use,
                   std::span<const Picture> pictures);

}  // namespace tools::check
