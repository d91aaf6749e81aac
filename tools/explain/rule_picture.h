#pragma once

#include <span>

#include "explain/rule_hits.h"
#include "host/files/result.h"
#include "host/images/bitmap.h"

namespace tools::explain {

/// A sheet of all keyplanes in `hits`, at least one, drawn by this process's keyboard, with an
/// outline around each key that is hit. A key that is hit only in some state is shown in it, as far
/// as one keyplane can show it. Main thread only.
host::files::Result<host::images::Bitmap> drawHits(std::span<const ViewHits> hits, bool quiet);

}  // namespace tools::explain
