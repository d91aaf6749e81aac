#pragma once

#include <string>

#include "host/drawing/fonts.h"
#include "host/files/result.h"
#include "host/images/bitmap.h"
#include "keyboard/keyboard_process.h"
#include "keyboard/view.h"

namespace tools::render {

/// One view, drawn by a keyboard in this process, which has none yet, with fonts that may have been
/// looked up before. `report` takes what was drawn, as JSON, unless it is null.
host::files::Result<host::images::Bitmap> drawView(const keyboard::Dress& dress,
                                                   const keyboard::View& view, double scale,
                                                   host::drawing::Fonts& fonts,
                                                   std::string* report = nullptr);

/// The same with fonts of its own.
host::files::Result<host::images::Bitmap> drawView(const keyboard::Dress& dress,
                                                   const keyboard::View& view, double scale,
                                                   std::string* report = nullptr);

}  // namespace tools::render
