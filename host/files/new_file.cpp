#include "host/files/new_file.h"

#include <atomic>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "host/files/tree.h"

namespace host::files {
namespace {

constexpr std::string_view kTemporaryPrefix = ".prismal-";

}  // namespace

Result<NewFile> NewFile::write(Descriptor directory, std::string name, std::string_view bytes,
                               Durability durability) {
  NewFile file(std::move(directory), std::move(name), durability);
  if (!file.create() || !file.fill(bytes)) return lastFailure();
  return file;
}

NewFile::~NewFile() {
  if (!file_) return;
  const int error = errno;
  removeEntry(directory_.get(), temporary_name_.c_str());
  errno = error;
}

Result<Done> NewFile::putInPlace() {
  if (!replace()) return lastFailure();
  if (durability_ == Durability::kSynced && !syncDirectory(directory_.get())) return lastFailure();
  return Done{};
}

bool NewFile::create() {
  static std::atomic<unsigned> count = 0;
  do {
    temporary_name_ =
        std::string(kTemporaryPrefix) + std::to_string(::getpid()) + '-' + std::to_string(count++);
    file_ = Descriptor(::openat(directory_.get(), temporary_name_.c_str(),
                                O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644));
  } while (!file_ && (errno == EEXIST || errno == EINTR));
  return static_cast<bool>(file_);
}

bool NewFile::fill(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  if (::fchmod(file_.get(), 0644) != 0) return false;  // whatever the process's umask
  return durability_ == Durability::kNone || ::fsync(file_.get()) == 0;
}

bool NewFile::replace() {
  const char* const from = temporary_name_.c_str();
  const int in = directory_.get();
  if (::renameat(in, from, in, name_.c_str()) == 0) {
    file_ = {};
    return true;
  }
  if (errno != EISDIR) return false;
  // A directory gives way only to an exchange; afterwards our old name is the tree's.
  if (::renameat2(in, from, in, name_.c_str(), RENAME_EXCHANGE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;  // only the file system's own refusal
  errno = removeEntry(in, name_.c_str());
  return errno == 0 && replace();
}

int removeNewFiles(int directory) {
  std::vector<std::string> names;
  int first = listNames(directory, names);
  for (const std::string& name : names) {
    if (!name.starts_with(kTemporaryPrefix)) continue;
    const int error = removeEntry(directory, name.c_str());
    if (first == 0) first = error;
  }
  return first;
}

bool syncDirectory(int directory) {
  const Descriptor readable(::openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return readable && ::fsync(readable.get()) == 0;
}

}  // namespace host::files
