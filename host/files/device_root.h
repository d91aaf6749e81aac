#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/files/descriptor.h"
#include "host/files/new_file.h"
#include "host/files/open_in_root.h"
#include "host/files/result.h"

namespace host::files {

/// The directory of this machine that stands for the device's `/`.
///
/// 1. Device paths are absolute; a relative one is taken from the root. They are resolved in the
///    root: `..` above it stays in it, an absolute symbolic link starts from it again.
/// 2. An empty path, one with a NUL byte and one that is too long fail; any other bytes are names.
/// 3. Operations that take what stands at a path (write, remove) mean a symbolic link there itself;
///    all others follow it.
/// 4. Descriptors are close-on-exec and owned by the caller.
/// 5. Any thread; the object only needs to outlive the call.
class DeviceRoot {
 public:
  enum class Creation { kNever, kIfMissing };

  /// The root at `machine_directory`, made together with its parents when `creation` says so.
  static Result<DeviceRoot> open(const std::filesystem::path& machine_directory, Creation creation);
  /// Same, with the way to resolve paths fixed: for tests and for machines without openat2.
  static Result<DeviceRoot> open(const std::filesystem::path& machine_directory, Creation creation,
                                 Resolution resolution);

  /// Whether it is the root of the machine itself, which nobody can mean as a device.
  bool isMachineRoot() const;

  /// A descriptor of whatever stands at `path` that only names it (O_PATH).
  Result<Descriptor> openPath(std::string_view path) const;
  /// A descriptor of the directory at `path` that only names it (O_PATH): for the *at calls.
  Result<Descriptor> openDirectory(std::string_view path) const;
  /// The regular file at `path`, to be read. Anything else is refused without waiting for it.
  Result<Descriptor> openFile(std::string_view path) const;

  /// Whether anything stands at `path`; a dangling link is nothing.
  bool exists(std::string_view path) const;

  /// Whether the relative `path` leads out of the root for those who don't take it for `/`.
  bool leadsOut(std::string_view path) const;

  /// All bytes of the regular file at `path`; a failure when they are more than `max_bytes`.
  Result<std::string> readFile(std::string_view path, std::size_t max_bytes) const;

  /// Puts a file (mode 0644) in the place of whatever stands at `path`, a directory tree included.
  /// Who reads meanwhile sees the old or the new, whole. Missing parent directories are made.
  Result<Done> writeFile(std::string_view path, std::string_view bytes,
                         Durability durability = Durability::kNone) const;

  /// The first half of writeFile: a new file with these bytes that waits to be put in the place of
  /// what stands at `path`. What can fail for want of room has been done then.
  Result<NewFile> prepareFile(std::string_view path, std::string_view bytes,
                              Durability durability) const;

  /// Moves the tree at `from` to `to`, in one step where the file system can. What stands at `to`
  /// changes places with it; missing parent directories of `to` are made. Synced. Both must lie in
  /// one file system.
  Result<Done> moveTree(std::string_view from, std::string_view to) const;

  /// Removes from the directory at `path` the files that prepareFile and writeFile have made in
  /// processes that were killed before they had their places. For whoever knows that no other
  /// process writes there now.
  Result<Done> removeNewFiles(std::string_view path) const;

  /// Removes from the directory at `path` itself everything whose name is not among `names`, trees
  /// whole; symbolic links in it go themselves. Nothing to do where there is no directory; a link
  /// in its place is refused. Goes on after an error and fails with the first.
  Result<Done> removeAllBut(std::string_view path,
                            const std::set<std::string, std::less<>>& names) const;

  /// Makes the directory at `path` and its parents where they are missing.
  Result<Done> makeDirectories(std::string_view path) const;

  /// Removes the file or tree at `path`; nothing to do where there is none. Of the root itself the
  /// contents go. Goes on after an error and fails with the first.
  Result<Done> remove(std::string_view path) const;

  /// The device paths of all that lies below the directory at `path` and is no directory, sorted by
  /// bytes; a symbolic link below it is listed, not followed. Empty where there is no directory.
  Result<std::vector<std::string>> list(std::string_view path) const;

 private:
  DeviceRoot(Descriptor directory, Resolution resolution)
      : directory_(std::move(directory)), resolution_(resolution) {}

  Result<Descriptor> open(std::string_view path, int flags) const;
  Result<Descriptor> ensureDirectory(std::string_view path, Durability durability) const;
  bool isRoot(const Descriptor& directory) const;

  Descriptor directory_;
  Resolution resolution_;
};

/// Where the root lies unless the user says otherwise: below the user's data directory. Relative to
/// the working directory when the environment names no home.
std::filesystem::path defaultDeviceRoot();

}  // namespace host::files
