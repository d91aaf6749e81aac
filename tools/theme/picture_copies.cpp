#include "theme/picture_copies.h"

#include <cerrno>

#include "backgrounds/double_resolution_path.h"
#include "host/images/limits.h"
#include "theme/folder_file.h"
#include "theme/limits.h"

namespace tools::theme {

using host::files::Failure;
using host::files::Result;

Result<std::optional<std::string>> PictureCopies::copy(const std::string& path) {
  const auto missing = copyFile(path);
  if (!missing) return missing.failure();
  const auto siblingMissing = copyFile(prismal::doubleResolutionPath(path));
  if (!siblingMissing) return siblingMissing.failure();
  // One of the two is enough.
  if (!*missing || !*siblingMissing) return std::optional<std::string>();
  return std::optional((*missing)->reason);
}

Result<PictureCopies::Missing> PictureCopies::copyFile(const std::string& path) {
  if (const auto known = known_.find(path); known != known_.end()) return known->second;
  auto missing = copyNewFile(path);
  if (missing) known_.emplace(path, *missing);
  return missing;
}

Result<PictureCopies::Missing> PictureCopies::copyNewFile(const std::string& path) {
  if (files_ == kMaxPictures) {
    return Missing(Failure(EFBIG, "more pictures than " + std::to_string(kMaxPictures)));
  }
  const auto bytes = readInFolder(folder_, path, host::images::kMaxFileBytes);
  if (!bytes) return Missing(bytes.failure());
  if (bytes->size() > kMaxPictureBytes - bytes_) {
    return Missing(Failure(EFBIG, "the pictures are larger together than " +
                                      std::to_string(kMaxPictureBytes >> 20U) + " MiB"));
  }
  ++files_;
  bytes_ += bytes->size();
  const std::string target = directory_ + path;
  const auto written = device_.writeFile(target, *bytes, durability_);
  if (!written) return Failure(written.failure().error, target + ": " + written.reason());
  return Missing();
}

}  // namespace tools::theme
