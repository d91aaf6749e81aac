#pragma once

#include <cstddef>
#include <string>

#include "host/files/result.h"
#include "host/images/bitmap.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/view.h"

namespace tools::render {

/// One view with a theme and without, side by side. Starts a process; this one has no keyboard yet.
host::files::Result<host::images::Bitmap> drawBesideSystem(const keyboard::Dress& dress,
                                                           const keyboard::View& view,
                                                           double scale);

struct Compared {
  host::images::Bitmap picture;  ///< both, and a third that marks what differs
  std::size_t pixels = 0;        ///< how many differ
};

/// One view in `dress` and with the theme at `otherTheme`. Starts a process, as above.
host::files::Result<Compared> drawDifference(const keyboard::Dress& dress,
                                             const std::string& otherTheme,
                                             const keyboard::View& view, double scale);

}  // namespace tools::render
