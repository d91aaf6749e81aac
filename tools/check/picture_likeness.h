#pragma once

#include "host/images/bitmap.h"

namespace tools::check {

/// Whether two valid pictures show different things, however large each is: one kept sharper, or
/// scaled by another program, shows the same.
bool showsOther(const host::images::Bitmap& one, const host::images::Bitmap& other);

}  // namespace tools::check
