#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <span>
#include <string>
#include <sys/inotify.h>

#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace tools::watch {

/// Notices when one of several files of this machine is saved, replaced, removed or made. Each
/// directory on the way to a file is watched for the next one's name, so that a folder that is
/// itself replaced counts as well, and so does one that is yet to be made.
class FileWatch {
 public:
  /// Fails when the machine gives no way to watch at all; what can't be watched for itself, such as
  /// a directory that may not be read, is passed over.
  static host::files::Result<FileWatch> start(std::span<const std::filesystem::path> files);

  /// Can be read when something has happened.
  int descriptor() const { return inotify_.get(); }
  /// Takes what has happened until now; whether any of it concerns the files.
  bool takeChanges();
  /// Whether something on the way to the files was made, moved or removed, as far as taken: what is
  /// watched may lie elsewhere then, and a new watch is needed.
  bool isStale() const { return isStale_; }

 private:
  struct Directory {
    std::filesystem::path path;
    std::set<std::string, std::less<>> names;
  };

  explicit FileWatch(host::files::Descriptor inotify) : inotify_(std::move(inotify)) {}
  void watchWayTo(const std::filesystem::path& file);
  bool concerns(const inotify_event& event, const char* name);

  host::files::Descriptor inotify_;
  std::map<int, Directory> directories_;  // by watch descriptor
  bool isStale_ = false;
};

}  // namespace tools::watch
