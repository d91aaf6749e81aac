#pragma once

#include <string>

namespace host::render {

/// Tells pictures of keys that this process would draw just so from those of another version of the
/// keyboard or of what it draws with. Installed fonts don't count. Main thread only.
const std::string& drawingStamp();

}  // namespace host::render
