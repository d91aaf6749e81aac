#include "host/files/temporary_directory.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <linux/magic.h>
#include <stdlib.h>
#include <string>
#include <sys/vfs.h>
#include <system_error>
#include <utility>

namespace host::files {
namespace {

constexpr const char* kMemory = "/dev/shm";

/// Whether the directory lies in memory and has room for all pictures of a theme.
bool isRoomyMemory(const char* directory) {
  constexpr std::uint64_t kRoomBytes = std::uint64_t{1} << 30U;
  struct statfs system {};
  return ::statfs(directory, &system) == 0 && system.f_type == TMPFS_MAGIC &&
         std::uint64_t{system.f_bavail} * static_cast<std::uint64_t>(system.f_bsize) >= kRoomBytes;
}

/// Makes a directory of the name that `name` then has; false, with an errno value, when it can't.
bool makeBelow(const std::filesystem::path& parent, std::string& name) {
  name = std::filesystem::absolute(parent / "prismal-XXXXXX");
  return ::mkdtemp(name.data()) != nullptr;
}

}  // namespace

TemporaryDirectory::TemporaryDirectory() {
  const InterruptionsWait wait;
  std::string name;
  const char* parent = std::getenv("TMPDIR");
  const bool is_chosen = parent != nullptr && *parent != '\0';
  // A disk may be waited for with each directory that goes: a quarter of the time of a picture.
  const bool is_made = !is_chosen && isRoomyMemory(kMemory) && makeBelow(kMemory, name);
  if (!is_made && !makeBelow(is_chosen ? parent : "/tmp", name)) {
    throw std::system_error(errno, std::generic_category(), name);
  }
  leftover_ = Leftover(name);
  path_ = std::move(name);
}

TemporaryDirectory::TemporaryDirectory(TemporaryDirectory&& other) noexcept
    : path_(std::exchange(other.path_, {})), leftover_(std::move(other.leftover_)) {}

TemporaryDirectory& TemporaryDirectory::operator=(TemporaryDirectory&& other) noexcept {
  std::swap(path_, other.path_);
  std::swap(leftover_, other.leftover_);
  return *this;
}

TemporaryDirectory::~TemporaryDirectory() {
  if (!path_.empty()) removeTree(path_.c_str());
}

}  // namespace host::files
