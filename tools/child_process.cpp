#include "child_process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <optional>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "descriptor_io.h"
#include "leave.h"

namespace tools {

using host::files::Descriptor;
using host::files::Failure;
using host::files::Result;

namespace {

/// What goes before the bytes, or before the text of the reason why there are none.
struct Header {
  std::uint64_t size = 0;
  bool isReason = false;
};

/// More than all pictures of a theme have together. The process may be a stranger's by now.
constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 30U;

/// No more memory than what has come, and a piece. None when it ends too early.
std::optional<std::string> receive(int fd, std::uint64_t size) {
  constexpr std::uint64_t kPiece = std::uint64_t{1} << 20U;
  std::string bytes;
  while (bytes.size() < size) {
    const std::size_t before = bytes.size();
    bytes.resize(before + std::min(kPiece, size - before));
    if (!readAll(fd, bytes.data() + before, bytes.size() - before)) return std::nullopt;
  }
  return bytes;
}

void send(int fd, const Result<std::string>& made) {
  const std::string& bytes = made ? *made : made.reason();
  const Header header{bytes.size(), !made};
  if (writeAll(fd, &header, sizeof header)) writeAll(fd, bytes.data(), bytes.size());
}

/// Nothing of the other process's may go on in this one's main function.
void workAndSend(const ChildProcess::Work& work, int fd) {
  try {
    send(fd, work());
  } catch (const std::exception& error) {
    send(fd, Failure(EINVAL, error.what()));
  } catch (...) {
    send(fd, Failure(EINVAL, "failed for an unknown reason"));
  }
}

}  // namespace

Result<ChildProcess> ChildProcess::start(const Work& work) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return host::files::lastFailure();
  Descriptor reading(ends[0]);
  const Descriptor writing(ends[1]);
  const pid_t parent = getpid();
  std::fflush(nullptr);  // or both would write it
  const pid_t process = fork();
  if (process < 0) return host::files::lastFailure();
  if (process == 0) {
    // Else it would wait for itself to read, should the other process have given up.
    reading = Descriptor();
    // Whoever ends the other process means this one, too.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(0);
    workAndSend(work, writing.get());
    leave(0);
  }
  return ChildProcess(process, std::move(reading));
}

ChildProcess::~ChildProcess() {
  if (!result_) return;
  // It gets an error from its writing when nobody reads, and ends.
  result_ = Descriptor();
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

Result<std::string> ChildProcess::bytes() {
  Header header;
  if (!readAll(result_.get(), &header, sizeof header)) return Failure(ECHILD);
  if (header.size > kMostBytes) return Failure(ECHILD);
  auto bytes = receive(result_.get(), header.size);
  if (!bytes) return Failure(ECHILD);
  if (header.isReason) return Failure(EINVAL, *std::move(bytes));
  return *std::move(bytes);
}

}  // namespace tools
