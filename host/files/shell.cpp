#include "host/files/shell.h"

#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "host/files/shell_words.h"

namespace host::files {
namespace {

// Below a file there is nothing, and there never will be.
constexpr const char* kNothing = "/dev/null/none";

// A named command that succeeds without a trace, as on every device whose caches are yet to be
// made. A shell and what it starts would take a tenth of the time of a picture.
constexpr std::string_view kEffectless = "/bin/rm -rf /dev/null/none/*";

// The shell's own redirections name single digits.
constexpr int kFirstDescriptor = 10;

// Names device paths by descriptors, and holds those for as long as the shell runs.
class Names {
 public:
  explicit Names(const DeviceRoot& root) : root_(root) {}

  std::optional<std::string> name(const PathWord& word) {
    if (!word.pattern.empty()) return below(word.path, word.pattern);
    std::string path = word.path;
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();  // or a link would be followed
    const auto slash = path.rfind('/') + 1;
    const std::string leaf = path.substr(slash);
    if (leaf.empty() || leaf == "." || leaf == "..") return below(path, ".");
    const std::string directory = path.substr(0, slash);
    if (!word.removed && isLink(directory, leaf)) return descriptor(root_.openPath(path));
    return below(directory, quotedForShell(leaf));
  }

  const std::vector<Descriptor>& held() const { return held_; }

 private:
  std::optional<std::string> below(const std::string& directory, const std::string& text) {
    auto name = descriptor(root_.openDirectory(directory));
    if (name) name->append("/").append(text);
    return name;
  }

  bool isLink(const std::string& directory, const std::string& leaf) const {
    const auto opened = root_.openDirectory(directory);
    struct stat status {};
    return opened && ::fstatat(opened->get(), leaf.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISLNK(status.st_mode);
  }

  std::optional<std::string> descriptor(const Result<Descriptor>& opened) {
    if (!opened) {
      const int error = opened.failure().error;
      if (error == ENOENT || error == ENOTDIR) return kNothing;
      return std::nullopt;
    }
    Descriptor moved(::fcntl(opened->get(), F_DUPFD_CLOEXEC, kFirstDescriptor));
    if (!moved) return std::nullopt;
    held_.push_back(std::move(moved));
    return "/proc/self/fd/" + std::to_string(held_.back().get());
  }

  const DeviceRoot& root_;
  std::vector<Descriptor> held_;
};

class SpawnActions {
 public:
  SpawnActions() { ::posix_spawn_file_actions_init(&actions_); }
  SpawnActions(const SpawnActions&) = delete;
  SpawnActions& operator=(const SpawnActions&) = delete;
  ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }

  // Onto itself, which only takes its close-on-exec flag away, and in the child alone.
  bool inherit(const Descriptor& descriptor) {
    return ::posix_spawn_file_actions_adddup2(&actions_, descriptor.get(), descriptor.get()) == 0;
  }
  bool startIn(const Descriptor& directory) {
    return ::posix_spawn_file_actions_addfchdir_np(&actions_, directory.get()) == 0;
  }
  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

int waitFor(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return status;
}

}  // namespace

int runShell(const DeviceRoot& root, std::string_view command) {
  if (command.find('\0') != command.npos) return -1;
  Names names(root);
  auto rewritten =
      rewriteDevicePaths(command, [&](const PathWord& word) { return names.name(word); });
  const auto directory = root.openDirectory("/");
  if (!rewritten || !directory) return -1;

  if (*rewritten == kEffectless) return 0;

  SpawnActions actions;
  if (!actions.startIn(*directory)) return -1;
  for (const Descriptor& held : names.held()) {
    if (!actions.inherit(held)) return -1;
  }
  std::string words[] = {"sh", "-c", "--", std::move(*rewritten)};
  char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
  pid_t process = 0;
  if (::posix_spawn(&process, "/bin/sh", actions.get(), nullptr, arguments, environ) != 0)
    return -1;
  return waitFor(process);
}

}  // namespace host::files
