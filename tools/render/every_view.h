#pragma once

#include <filesystem>
#include <optional>
#include <span>

#include "host/files/result.h"
#include "host/images/bitmap.h"
#include "keyboard/view.h"

namespace tools::render {

// Many views of this process's keyboard: shown one after the other on this thread, which has to be
// the main one, and drawn on all processors. On a terminal a bar tells how far they are, unless
// `quiet`.

/// One picture with all `views`, at least one, each with a caption.
host::files::Result<host::images::Bitmap> drawSheet(std::span<const keyboard::View> views,
                                                    double scale, bool quiet);

/// Each view as a PNG file in `directory`, named by its words: phone-4-landscape-alert-numbers.png.
/// Makes the directory if need be. Draws all that can be; the first failure, if any.
std::optional<host::files::Failure> drawFiles(std::span<const keyboard::View> views, double scale,
                                              const std::filesystem::path& directory, bool quiet);

}  // namespace tools::render
