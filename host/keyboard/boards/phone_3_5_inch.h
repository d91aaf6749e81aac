#pragma once

#include "host/keyboard/boards/phone_english.h"

namespace host::boards {

inline constexpr Board kPhone3_5Inch = {
    .name = "Phone-3.5-Inch",
    .is_tablet = false,
    .visual_styles = {.portrait = {.letters = 1, .numbers = 1},
                      .landscape = {.letters = 2, .numbers = 2},
                      .alert = 3},
    .portrait = {.size = {320, 216},
                 .unit = 32,
                 .margin = 0,
                 .top = 8,
                 .row_pitch = 54,
                 .face_height = 42,
                 .face_gap = 6,
                 .corner_radius = 4},
    .landscape = {.size = {480, 162},
                  .unit = 48,
                  .margin = 0,
                  .top = 6,
                  .row_pitch = 40,
                  .face_height = 32,
                  .face_gap = 6,
                  .corner_radius = 4},
    .keyplanes = phone_english::kKeyplanes,
};

}  // namespace host::boards
