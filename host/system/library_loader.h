#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace host::system {

/// Loads the dynamic library into this process, all its symbols bound at once. Its initialiser has
/// run when this returns. None on success, else why not, in one line. The library is never
/// unloaded.
std::optional<std::string> loadLibrary(const std::filesystem::path& library);

}  // namespace host::system
