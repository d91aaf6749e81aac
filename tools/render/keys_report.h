#pragma once

#include <string>

#include "keyboard/shown_view.h"
#include "keyboard/view.h"

namespace tools::render {

/// What was drawn, as one JSON object: of the view that the keyboard shows now, for each key its
/// identity, the pixels of its face and the traits that the factory returns. A dictation panel has
/// no keys. Main thread only.
std::string keysReport(const keyboard::View& view, const keyboard::ShownView& shown);

}  // namespace tools::render
