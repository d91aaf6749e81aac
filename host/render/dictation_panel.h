#pragma once

#include <optional>
#include <string>

#include "host/drawing/picture.h"
#include "host/render/keyplane.h"

namespace host::render {

/// Makes the keyboard of this process show `keyplane`, and above it, as large as it is, the panel
/// of a user who dictates.
void showDictation(const LiveKeyplane& keyplane, const KeyplaneChoice& choice);

/// What the keyboard draws of the panel that is shown above `keyplane`: how loud the user speaks,
/// and the key that ends it where the keyplane has its lowest row. Its names are resolved by asking
/// the keyboard; the images in it belong to the panel's view.
drawing::KeyboardPicture pictureOfDictation(const LiveKeyplane& keyplane,
                                            const KeyplaneChoice& choice, double scale);

/// The device path of the image behind the panel; none where none is shown.
std::optional<std::string> dictationBackgroundPath();

}  // namespace host::render
