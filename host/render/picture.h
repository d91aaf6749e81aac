#pragma once

#include "host/drawing/picture.h"
#include "host/render/keyplane.h"

namespace host::render {

/// What the keyboard draws of `keyplane`, which must be the one that is shown: every key as the
/// render factory wants it, its names resolved by asking the keyboard. The images in it belong to
/// the keyboard's views.
drawing::KeyboardPicture pictureOf(const LiveKeyplane& keyplane, double scale);

}  // namespace host::render
