#pragma once

#include "host/drawing/picture.h"
#include "host/keyboard/boards/key_state.h"
#include "host/keyboard/boards/layout.h"
#include "host/keyboard/boards/system_look.h"

namespace host {

/// A placed keyplane in the system's look, as the keyboard draws it without a theme, every key in
/// `state`.
drawing::KeyboardPicture systemPicture(const boards::Board& board, boards::Plane plane,
                                       boards::Orientation orientation, boards::Variant variant,
                                       boards::Look look, double scale,
                                       boards::KeyState state = boards::KeyState::normal);

}  // namespace host
