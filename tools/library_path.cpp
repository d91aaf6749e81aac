#include "library_path.h"

#include <system_error>

namespace tools {

namespace fs = std::filesystem;

fs::path libraryPath() {
  constexpr const char* kName = "libprismal.so";
  std::error_code error;
  const fs::path prefix = fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
  for (const fs::path& directory : {prefix / "lib", prefix / "lib" / "prismal"}) {
    if (fs::exists(directory / kName, error)) return directory / kName;
  }
  return prefix / "lib" / kName;
}

}  // namespace tools
