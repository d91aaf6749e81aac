#pragma once

#include <filesystem>

#include "host/files/leftovers.h"

namespace host::files {

/// A new directory of this machine, removed with its contents at the end, or by removeLeftovers. It
/// lies below $TMPDIR, else in memory where there is plenty of room, else below /tmp.
class TemporaryDirectory {
 public:
  /// Throws std::system_error when none can be made.
  TemporaryDirectory();
  TemporaryDirectory(TemporaryDirectory&& other) noexcept;
  TemporaryDirectory& operator=(TemporaryDirectory&& other) noexcept;
  ~TemporaryDirectory();

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
  Leftover leftover_;
};

}  // namespace host::files
