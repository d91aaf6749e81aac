// Takes the library's place and tries, below the folder $PROBE, what nothing that draws may do.
// Each try is a line on standard error: its name and an errno value, 0 for what could be done.

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <netinet/in.h>
#include <spawn.h>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string in(const std::string& path) {
  const char* const folder = std::getenv("PROBE");
  return std::string(folder ? folder : "/nowhere") + "/" + path;
}

void tell(const char* name, bool isDone) {
  std::fprintf(stderr, "%s %d\n", name, isDone ? 0 : errno);
}

void tellOpen(const char* name, const std::string& path, int flags) {
  const int file = ::open(path.c_str(), flags, 0600);
  tell(name, file >= 0);
  if (file >= 0) ::close(file);
}

void tryFiles() {
  tellOpen("read-other", in("other.txt"), O_RDONLY);
  tellOpen("read-theme", in("T.theme/theme.plist"), O_RDONLY);
  tellOpen("write-theme", in("T.theme/theme.plist"), O_WRONLY);
  tellOpen("write-device", in("device/var/mobile/kept.txt"), O_WRONLY);
  tellOpen("write-beside", in("made.txt"), O_WRONLY | O_CREAT);
  tell("list", ::open(in(".").c_str(), O_RDONLY | O_DIRECTORY) >= 0);
  tell("rename", ::rename(in("other.txt").c_str(), in("moved.txt").c_str()) == 0 &&
                     ::rename(in("moved.txt").c_str(), in("other.txt").c_str()) == 0);
  tell("link", ::symlink("other.txt", in("link").c_str()) == 0);
  tell("remove", ::unlink(in("gone.txt").c_str()) == 0);
  tell("change-mode", ::chmod(in("other.txt").c_str(), 0600) == 0);
  const int kept = ::open(in("device/var/mobile/kept.txt").c_str(), O_RDONLY);
  tell("change-open-mode", kept >= 0 && ::fchmod(kept, 0600) == 0);
  if (kept >= 0) ::close(kept);
  tellOpen("read-font", "/usr/share/fonts", O_RDONLY | O_DIRECTORY);
  tellOpen("read-device", in("device/var/mobile/kept.txt"), O_RDONLY);
}

void tryOthers() {
  for (const int family : {AF_INET, AF_UNIX}) {
    const int socket = ::socket(family, SOCK_STREAM, 0);
    tell(family == AF_INET ? "network" : "local-socket", socket >= 0);
    if (socket >= 0) ::close(socket);
  }
  tell("signal", ::kill(::getppid(), 0) == 0);
  rlimit limit{};
  tell("limits", ::prlimit(::getppid(), RLIMIT_NOFILE, nullptr, &limit) == 0);
  const auto parent = static_cast<id_t>(::getppid());
  const int priority = ::getpriority(PRIO_PROCESS, parent);
  tell("slow-down", ::setpriority(PRIO_PROCESS, parent, priority) == 0);
  tell("unnamed-file", ::memfd_create("x", 0) >= 0);
  char byte = 0;
  errno = ENODATA;  // at the end of a file, too
  tell("input", ::read(STDIN_FILENO, &byte, 1) > 0);
  std::string name = "/bin/true";
  char* const arguments[] = {name.data(), nullptr};
  pid_t process = 0;
  errno = ::posix_spawn(&process, name.c_str(), nullptr, nullptr, arguments, environ);
  tell("program", errno == 0);
}

}  // namespace

extern "C" __attribute__((constructor, visibility("default"))) void PMLibraryLoad();

void PMLibraryLoad() {
  if (std::getenv("PROBE_WAITS")) ::pause();
  tryFiles();
  tryOthers();
  std::fputs("tried\n", stderr);
}
