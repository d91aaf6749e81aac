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

/// Each view as a PNG file's bytes; none of one that can't be drawn.
host::files::Result<std::vector<std::string>> drawEach(std::span<const keyboard::View> views,
                                                       double scale, bool quiet);

/// Writes what drawEach made in `directory`, each view named by its words:
/// phone-4-landscape-alert-numbers.png. Makes the directory if need be. Writes all that there are;
/// the first failure, if any. Any process.
std::optional<host::files::Failure> writeFiles(std::span<const keyboard::View> views,
                                               std::span<const std::string> pictures,
                                               const std::filesystem::path& directory);

}  // namespace tools::render
