#pragma once

#include <optional>
#include <string>

#include "host/drawing/fonts.h"
#include "host/drawing/picture.h"
#include "host/render/keyplane.h"

namespace host::render {

/// What the keyboard draws of `keyplane`, which must be the one that is shown: every key as the
/// render factory wants it, its names resolved by asking the keyboard. The images in it belong to
/// the keyboard's views.
drawing::KeyboardPicture pictureOf(const LiveKeyplane& keyplane, double scale);

/// The same by way of the keyboard's cache, where the keyboard, asked here, may use it: nobody is
/// asked about a key that it has; every other one is drawn, with `fonts`, and put into it. Its keys
/// are pixels then, their edges mixed with what lies behind them only once.
drawing::KeyboardPicture pictureOf(const LiveKeyplane& keyplane, double scale,
                                   drawing::Fonts& fonts);

/// The device path of the image behind the keys; none where none is shown.
std::optional<std::string> backgroundPath();

}  // namespace host::render
