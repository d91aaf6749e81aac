#pragma once

#include <filesystem>

namespace host::files {

/// A new directory of this machine, removed with its contents at the end. It lies below $TMPDIR,
/// else in memory where there is plenty of room, else below /tmp.
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
};

}  // namespace host::files
