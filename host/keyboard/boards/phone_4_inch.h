#pragma once

#include "host/keyboard/boards/phone_english.h"

namespace host::boards {

inline constexpr Board kPhone4Inch = {
    .name = "Phone-4-Inch",
    .is_tablet = false,
    .visual_styles = {.portrait = {.letters = 4, .numbers = 4},
                      .landscape = {.letters = 5, .numbers = 5},
                      .alert = 3},
    .portrait = {.size = {320, 216},
                 .unit = 32,
                 .margin = 0,
                 .top = 8,
                 .row_pitch = 54,
                 .face_height = 42,
                 .face_gap = 6,
                 .corner_radius = 4},
    .landscape = {.size = {568, 162},
                  .unit = 56,
                  .margin = 4,
                  .top = 6,
                  .row_pitch = 40,
                  .face_height = 32,
                  .face_gap = 6,
                  .corner_radius = 4},
    .keyplanes = phone_english::kKeyplanes,
};

}  // namespace host::boards
