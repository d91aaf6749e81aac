#include "host/files/device_root.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "host/files/tree.h"

namespace host::files {
namespace {

struct SplitPath {
  std::string_view parent;
  std::string_view leaf;  // empty for the root

  bool namesEntry() const { return !leaf.empty() && leaf != "." && leaf != ".."; }
};

SplitPath split(std::string_view path) {
  while (path.ends_with('/')) path.remove_suffix(1);
  const auto slash = path.rfind('/');
  if (slash == path.npos) return {"/", path};
  return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

bool isNothing(const Failure& failure) {
  return failure.error == ENOENT || failure.error == ENOTDIR;
}

struct Place {
  int directory;
  std::string name;
};

bool rename(const Place& from, const Place& to, unsigned flags = 0) {
  return ::renameat2(from.directory, from.name.c_str(), to.directory, to.name.c_str(), flags) == 0;
}

// Gives `from` the place of `to` and, where there was something, that one the place of `from`.
bool exchange(const Place& from, const Place& to) {
  if (rename(from, to, RENAME_EXCHANGE)) return true;
  if (errno == ENOENT) return rename(from, to);
  if (errno != EINVAL && errno != ENOSYS) return false;
  // The file system's own refusal, as over a network: for a moment nothing stands there.
  const Place aside{from.directory, from.name + '~'};
  if (!rename(to, aside)) return errno == ENOENT && rename(from, to);
  return rename(from, to) && rename(aside, from);
}

}  // namespace

Result<DeviceRoot> DeviceRoot::open(const std::filesystem::path& machine_directory,
                                    Creation creation) {
  auto root = open(machine_directory, creation, Resolution::kWalk);
  if (root) root->resolution_ = bestResolution(root->directory_.get());
  return root;
}

Result<DeviceRoot> DeviceRoot::open(const std::filesystem::path& machine_directory,
                                    Creation creation, Resolution resolution) {
  if (creation == Creation::kIfMissing) {
    std::error_code error;
    std::filesystem::create_directories(machine_directory, error);
    if (error) return Failure(error.value(), error.message());
  }
  Descriptor directory(::open(machine_directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!directory) return lastFailure();
  return DeviceRoot(std::move(directory), resolution);
}

bool DeviceRoot::isMachineRoot() const {
  struct stat own {};
  struct stat machine {};
  return ::fstat(directory_.get(), &own) == 0 && ::stat("/", &machine) == 0 &&
         own.st_dev == machine.st_dev && own.st_ino == machine.st_ino;
}

Result<Descriptor> DeviceRoot::open(std::string_view path, int flags) const {
  if (path.empty() || path.find('\0') != path.npos) return Failure(EINVAL);
  return openInRoot(directory_.get(), std::string(path), flags, resolution_);
}

Result<Descriptor> DeviceRoot::openPath(std::string_view path) const {
  return open(path, O_PATH);
}

Result<Descriptor> DeviceRoot::openDirectory(std::string_view path) const {
  return open(path, O_PATH | O_DIRECTORY);
}

Result<Descriptor> DeviceRoot::openFile(std::string_view path) const {
  // Without waiting: a pipe in the place of a file would keep us until somebody writes to it.
  auto file = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
  if (!file) return file;
  struct stat status {};
  if (::fstat(file->get(), &status) != 0) return lastFailure();
  if (S_ISDIR(status.st_mode)) return Failure(EISDIR);
  if (!S_ISREG(status.st_mode)) return Failure(EINVAL, "Not a regular file");
  return file;
}

bool DeviceRoot::exists(std::string_view path) const {
  return static_cast<bool>(openPath(path));
}

bool DeviceRoot::leadsOut(std::string_view path) const {
  return files::leadsOut(directory_.get(), std::string(path));
}

Result<std::string> DeviceRoot::readFile(std::string_view path, std::size_t max_bytes) const {
  const auto file = openFile(path);
  if (!file) return file.failure();
  struct stat status {};
  if (::fstat(file->get(), &status) != 0) return lastFailure();
  const Failure too_large(EFBIG, "Larger than " + std::to_string(max_bytes) + " bytes");
  if (std::cmp_greater(status.st_size, max_bytes)) return too_large;

  // The size is a guess: the file may change under us. One byte more than it, so that a file that
  // keeps still is read by one call and the end seen by a second.
  std::string bytes(static_cast<std::size_t>(status.st_size) + 1, '\0');
  std::size_t size = 0;
  for (;;) {
    const ssize_t got = ::read(file->get(), bytes.data() + size, bytes.size() - size);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return lastFailure();
    if (got == 0) break;
    size += static_cast<std::size_t>(got);
    if (size > max_bytes) return too_large;
    if (size == bytes.size()) bytes.resize(std::min(2 * size, max_bytes) + 1);
  }
  bytes.resize(size);
  return bytes;
}

Result<Done> DeviceRoot::writeFile(std::string_view path, std::string_view bytes,
                                   Durability durability) const {
  auto file = prepareFile(path, bytes, durability);
  if (!file) return file.failure();
  return file->putInPlace();
}

Result<NewFile> DeviceRoot::prepareFile(std::string_view path, std::string_view bytes,
                                        Durability durability) const {
  const SplitPath place = split(path);
  if (!place.namesEntry()) return Failure(EISDIR);
  // Before anything is made on the way to it.
  if (path.find('\0') != path.npos) return Failure(EINVAL);
  auto directory = ensureDirectory(place.parent, durability);
  if (!directory) return directory.failure();
  return NewFile::write(*std::move(directory), std::string(place.leaf), bytes, durability);
}

Result<Done> DeviceRoot::moveTree(std::string_view from, std::string_view to) const {
  const SplitPath source = split(from);
  const SplitPath target = split(to);
  if (!source.namesEntry() || !target.namesEntry()) return Failure(EINVAL);
  const auto old_parent = openDirectory(source.parent);
  if (!old_parent) return old_parent.failure();
  const auto new_parent = ensureDirectory(target.parent, Durability::kSynced);
  if (!new_parent) return new_parent.failure();
  if (!exchange({old_parent->get(), std::string(source.leaf)},
                {new_parent->get(), std::string(target.leaf)})) {
    return lastFailure();
  }
  if (!syncDirectory(new_parent->get())) return lastFailure();
  return Done{};
}

Result<Done> DeviceRoot::removeNewFiles(std::string_view path) const {
  const auto directory = openDirectory(path);
  if (!directory && isNothing(directory.failure())) return Done{};
  if (!directory) return directory.failure();
  const int error = files::removeNewFiles(directory->get());
  if (error != 0) return Failure(error);
  return Done{};
}

Result<Done> DeviceRoot::removeAllBut(std::string_view path,
                                      const std::set<std::string, std::less<>>& names) const {
  while (path.ends_with('/')) path.remove_suffix(1);  // else a link there would be followed
  const auto directory = open(path, O_PATH | O_DIRECTORY | O_NOFOLLOW);
  if (!directory && directory.failure().error == ENOENT) return Done{};
  if (!directory) return directory.failure();
  std::vector<std::string> found;
  int first = listNames(directory->get(), found);
  for (const std::string& name : found) {
    if (names.contains(name)) continue;
    const int error = removeEntry(directory->get(), name.c_str());
    if (first == 0) first = error;
  }
  if (first != 0) return Failure(first);
  return Done{};
}

Result<Done> DeviceRoot::makeDirectories(std::string_view path) const {
  const auto directory = ensureDirectory(path, Durability::kNone);
  if (!directory) return directory.failure();
  return Done{};
}

Result<Descriptor> DeviceRoot::ensureDirectory(std::string_view path, Durability durability) const {
  auto directory = openDirectory(path);
  if (directory || directory.failure().error != ENOENT) return directory;
  directory = openDirectory("/");
  for (std::size_t begin = 0, end = 0; directory; begin = end) {
    begin = path.find_first_not_of('/', begin);
    if (begin == path.npos) return directory;
    end = std::min(path.find('/', begin), path.size());
    // Always from the root, so that `..` and links mean here what they will mean to everybody.
    auto next = openDirectory(path.substr(0, end));
    if (!next && next.failure().error == ENOENT) {
      const std::string name(path.substr(begin, end - begin));
      if (::mkdirat(directory->get(), name.c_str(), 0755) != 0 && errno != EEXIST) {
        return lastFailure();
      }
      if (durability == Durability::kSynced && !syncDirectory(directory->get())) {
        return lastFailure();
      }
      next = openDirectory(path.substr(0, end));
    }
    directory = std::move(next);
  }
  return directory;
}

bool DeviceRoot::isRoot(const Descriptor& directory) const {
  struct stat one {};
  struct stat root {};
  return ::fstat(directory.get(), &one) == 0 && ::fstat(directory_.get(), &root) == 0 &&
         one.st_dev == root.st_dev && one.st_ino == root.st_ino;
}

Result<Done> DeviceRoot::remove(std::string_view path) const {
  if (path.find('\0') != path.npos) return Failure(EINVAL);
  const SplitPath place = split(path);
  const auto directory = openDirectory(place.namesEntry() ? place.parent : path);
  if (!directory && isNothing(directory.failure())) return Done{};
  if (!directory) return directory.failure();

  int error = EINVAL;  // what `.` and `..` name has another name, under which it can go
  if (place.namesEntry()) {
    error = removeEntry(directory->get(), std::string(place.leaf).c_str());
  } else if (isRoot(*directory)) {
    error = removeContents(directory->get());
  }
  if (error != 0) return Failure(error);
  return Done{};
}

Result<std::vector<std::string>> DeviceRoot::list(std::string_view path) const {
  std::vector<std::string> files;
  const auto directory = openDirectory(path);
  if (!directory && isNothing(directory.failure())) return files;
  if (!directory) return directory.failure();

  std::string prefix;
  for (std::size_t begin = 0, end = 0; begin < path.size(); begin = end + 1) {
    end = std::min(path.find('/', begin), path.size());
    if (const auto name = path.substr(begin, end - begin); !name.empty() && name != ".") {
      prefix.append("/").append(name);
    }
  }
  const int error = listFiles(directory->get(), prefix, files);
  if (error != 0) return Failure(error);
  std::sort(files.begin(), files.end());
  return files;
}

std::filesystem::path defaultDeviceRoot() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::filesystem::path(value == nullptr ? "" : value);
  };
  std::filesystem::path data = variable("XDG_DATA_HOME");
  if (!data.is_absolute()) data = variable("HOME") / ".local" / "share";
  return data / "prismal" / "device";
}

}  // namespace host::files
