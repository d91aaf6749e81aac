#pragma once

#include <string>
#include <string_view>

#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace host::files {

/// What of a write is still there after the machine itself has stopped.
enum class Durability {
  kNone,    ///< whatever the machine has got round to: for what can be made again
  kSynced,  ///< all of it, once the call has returned
};

/// A file under a name that nobody else has, which goes unless it is put in the place that it is
/// for. Any thread.
class NewFile {
 public:
  /// Writes `bytes` (mode 0644) into a new file of `directory`, which may be an O_PATH descriptor,
  /// to stand there as `name` later.
  static Result<NewFile> write(Descriptor directory, std::string name, std::string_view bytes,
                               Durability durability);

  NewFile(NewFile&&) = default;
  NewFile& operator=(NewFile&&) = delete;
  ~NewFile();

  /// Takes the place of whatever bears the name, a directory tree included. Who reads meanwhile
  /// sees the old or the new, whole.
  Result<Done> putInPlace();

 private:
  NewFile(Descriptor directory, std::string name, Durability durability)
      : directory_(std::move(directory)), name_(std::move(name)), durability_(durability) {}

  bool create();
  bool fill(std::string_view bytes) const;
  bool replace();

  Descriptor directory_;
  std::string name_;
  Durability durability_;
  std::string temporary_name_;
  Descriptor file_;  // open for as long as the temporary name is ours to remove
};

/// Removes the files that NewFile has made in `directory` and never put in their places, because
/// their process was killed: for whoever knows that nobody is writing there now. An errno value, 0
/// for none.
int removeNewFiles(int directory);

/// Waits until the entries of `directory`, which may be an O_PATH descriptor, are on the disk.
bool syncDirectory(int directory);

}  // namespace host::files
