#pragma once

// Visual styles: the numbers by which a keyplane says how it wants to look. Any thread may ask.

#include "host/keyboard/boards/board.h"

namespace host::boards {

/// How large keys are, and so what stands on them.
enum class Family { phone, tablet };

inline constexpr int kFirstVisualStyle = 1;
inline constexpr int kLastVisualStyle = 12;

constexpr Look lookOf(int visual_style) {
  return visual_style == 3 || visual_style == 9 ? Look::alert : Look::standard;
}

/// The family of keyplanes of `visual_style`; that of the device for numbers that are no style.
constexpr Family familyOf(int visual_style, Family device) {
  if (visual_style < kFirstVisualStyle || visual_style > kLastVisualStyle) return device;
  return visual_style < 6 ? Family::phone : Family::tablet;
}

}  // namespace host::boards
