#include "host/files/temporary_directory.h"

#include <cerrno>
#include <fcntl.h>
#include <stdlib.h>
#include <string>
#include <system_error>
#include <utility>

#include "host/files/tree.h"

namespace host::files {

TemporaryDirectory::TemporaryDirectory() {
  const char* parent = std::getenv("TMPDIR");
  if (parent == nullptr || *parent == '\0') parent = "/tmp";
  std::string name = std::filesystem::absolute(std::filesystem::path(parent) / "prismal-XXXXXX");
  if (::mkdtemp(name.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), name);
  }
  path_ = std::move(name);
}

TemporaryDirectory::TemporaryDirectory(TemporaryDirectory&& other) noexcept
    : path_(std::exchange(other.path_, {})) {}

TemporaryDirectory& TemporaryDirectory::operator=(TemporaryDirectory&& other) noexcept {
  std::swap(path_, other.path_);
  return *this;
}

TemporaryDirectory::~TemporaryDirectory() {
  if (!path_.empty()) removeEntry(AT_FDCWD, path_.c_str());
}

}  // namespace host::files
