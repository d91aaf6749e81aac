#include "render/other_process.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace tools::render {

using host::files::Descriptor;
using host::files::Failure;
using host::files::Result;
using host::images::Bitmap;

namespace {

/// What goes before the pixels, or before the text of the reason why there are none.
struct Header {
  bool isPicture = false;
  bool opaque = false;
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::uint32_t reason_size = 0;
};

bool writeAll(int fd, const void* data, std::size_t size) {
  const char* at = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t written = ::write(fd, at, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    at += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

bool readAll(int fd, void* data, std::size_t size) {
  char* at = static_cast<char*>(data);
  while (size > 0) {
    const ssize_t taken = ::read(fd, at, size);
    if (taken < 0 && errno == EINTR) continue;
    if (taken <= 0) return false;
    at += taken;
    size -= static_cast<std::size_t>(taken);
  }
  return true;
}

void send(int fd, const Result<Bitmap>& picture) {
  Header header;
  if (!picture) {
    header.reason_size = static_cast<std::uint32_t>(picture.reason().size());
    if (writeAll(fd, &header, sizeof header)) {
      writeAll(fd, picture.reason().data(), picture.reason().size());
    }
    return;
  }
  header = {true, picture->opaque, picture->width, picture->height, 0};
  if (writeAll(fd, &header, sizeof header)) {
    writeAll(fd, picture->pixels.data(), picture->pixels.size() * sizeof(host::images::Pixel));
  }
}

/// Nothing of the other process's may go on in this one's main function.
void drawAndSend(const OtherProcess::Draw& draw, int fd) {
  try {
    send(fd, draw());
  } catch (const std::exception& error) {
    send(fd, Failure(EINVAL, error.what()));
  } catch (...) {
    send(fd, Failure(EINVAL, "failed for an unknown reason"));
  }
}

/// None when the sender died before it was done.
std::optional<Result<Bitmap>> receive(int fd) {
  Header header;
  if (!readAll(fd, &header, sizeof header)) return std::nullopt;
  if (!header.isPicture) {
    std::string reason(header.reason_size, '\0');
    if (!readAll(fd, reason.data(), reason.size())) return std::nullopt;
    return Failure(EINVAL, std::move(reason));
  }
  Bitmap bitmap;
  bitmap.width = header.width;
  bitmap.height = header.height;
  bitmap.opaque = header.opaque;
  bitmap.pixels.resize(static_cast<std::size_t>(header.width) *
                       static_cast<std::size_t>(header.height));
  if (!readAll(fd, bitmap.pixels.data(), bitmap.pixels.size() * sizeof(host::images::Pixel))) {
    return std::nullopt;
  }
  return bitmap;
}

}  // namespace

Result<OtherProcess> OtherProcess::start(const Draw& draw) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return host::files::lastFailure();
  Descriptor reading(ends[0]);
  const Descriptor writing(ends[1]);
  const pid_t process = fork();
  if (process < 0) return host::files::lastFailure();
  if (process == 0) {
    // Else it would wait for itself to read, should the other process have given up.
    reading = Descriptor();
    drawAndSend(draw, writing.get());
    std::fflush(stderr);
    _exit(0);
  }
  return OtherProcess(process, std::move(reading));
}

OtherProcess::~OtherProcess() {
  if (!result_) return;
  // It gets an error from its writing when nobody reads, and ends.
  result_ = Descriptor();
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

Result<Bitmap> OtherProcess::picture() {
  auto picture = receive(result_.get());
  if (!picture) return Failure(ECHILD, "the process that draws the other picture died");
  return *std::move(picture);
}

}  // namespace tools::render
