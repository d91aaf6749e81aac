#include "host/files/tree.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "host/files/descriptor.h"

namespace host::files {
namespace {

// Deeper than any path can name. Each level holds a descriptor and a frame of the stack.
constexpr int kMaxDepth = PATH_MAX / 2;

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};

struct Entry {
  std::string name;
  unsigned char type;
};

Descriptor openForReading(int directory, const char* name) {
  return Descriptor(::openat(directory, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// All entries at once: what readdir does with a directory that changes meanwhile is nobody's
// promise.
int readEntries(int directory, std::vector<Entry>& entries) {
  Descriptor readable = openForReading(directory, ".");
  if (!readable) return errno;
  const std::unique_ptr<DIR, CloseDirectory> stream(::fdopendir(readable.get()));
  if (!stream) return errno;
  readable.release();
  errno = 0;
  while (const dirent* entry = ::readdir(stream.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") entries.push_back({std::string(name), entry->d_type});
  }
  return errno;
}

bool isDirectory(int directory, const Entry& entry) {
  if (entry.type != DT_UNKNOWN) return entry.type == DT_DIR;
  struct stat status {};
  return ::fstatat(directory, entry.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISDIR(status.st_mode);
}

int removeContents(int directory, int depth);

// `earlier` is the error that would explain why it can't go.
int removeDirectory(int parent, const char* name, int earlier) {
  if (::unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT) return 0;
  return earlier != 0 ? earlier : errno;
}

int removeEntry(int parent, const char* name, int depth) {
  if (::unlinkat(parent, name, 0) == 0 || errno == ENOENT) return 0;
  if (errno != EISDIR) return errno;
  if (depth == kMaxDepth) return ENAMETOOLONG;
  int error = 0;
  {
    const Descriptor directory = openForReading(parent, name);
    // One that may not be read can still go when it is empty.
    if (!directory) return removeDirectory(parent, name, errno);
    error = removeContents(directory.get(), depth + 1);
  }
  return removeDirectory(parent, name, error);
}

int removeContents(int directory, int depth) {
  std::vector<Entry> entries;
  int first = readEntries(directory, entries);
  for (const Entry& entry : entries) {
    const int error = removeEntry(directory, entry.name.c_str(), depth);
    if (first == 0) first = error;
  }
  return first;
}

int listFiles(int directory, const std::string& prefix, std::vector<std::string>& files,
              int depth) {
  if (depth == kMaxDepth) return ENAMETOOLONG;
  std::vector<Entry> entries;
  int first = readEntries(directory, entries);
  for (const Entry& entry : entries) {
    std::string path = prefix + '/' + entry.name;
    if (!isDirectory(directory, entry)) {
      files.push_back(std::move(path));
      continue;
    }
    const Descriptor below = openForReading(directory, entry.name.c_str());
    const int error = below ? listFiles(below.get(), path, files, depth + 1) : errno;
    // What has just been removed is not there to list.
    if (first == 0 && error != ENOENT) first = error;
  }
  return first;
}

}  // namespace

int removeEntry(int directory, const char* name) {
  return removeEntry(directory, name, 0);
}

int removeContents(int directory) {
  return removeContents(directory, 0);
}

int listNames(int directory, std::vector<std::string>& names) {
  std::vector<Entry> entries;
  const int error = readEntries(directory, entries);
  for (Entry& entry : entries) names.push_back(std::move(entry.name));
  return error;
}

int listFiles(int directory, const std::string& prefix, std::vector<std::string>& files) {
  return listFiles(directory, prefix, files, 0);
}

}  // namespace host::files
