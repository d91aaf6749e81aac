#include "theme/folder_file.h"

#include <cerrno>

namespace tools::theme {

host::files::Result<std::string> readInFolder(const host::files::DeviceRoot& folder,
                                              const std::string& path, std::size_t max_bytes) {
  // Else it would be missing, though everybody sees it there.
  if (folder.leadsOut(path)) {
    return host::files::Failure(EXDEV, "a link that leads out of the folder");
  }
  return folder.readFile(path, max_bytes);
}

}  // namespace tools::theme
