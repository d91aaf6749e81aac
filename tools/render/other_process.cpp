#include "render/other_process.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tools::render {

using host::files::Failure;
using host::files::Result;
using host::images::Bitmap;
using host::images::Pixel;

namespace {

/// What goes before the pixels.
struct Header {
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool opaque = false;
};

std::string bytesOf(const Bitmap& picture) {
  const Header header{picture.width, picture.height, picture.opaque};
  std::string bytes(sizeof header + picture.pixels.size() * sizeof(Pixel), '\0');
  std::memcpy(bytes.data(), &header, sizeof header);
  std::memcpy(bytes.data() + sizeof header, picture.pixels.data(), bytes.size() - sizeof header);
  return bytes;
}

Bitmap bitmapOf(std::string_view bytes) {
  Header header;
  std::memcpy(&header, bytes.data(), sizeof header);
  bytes.remove_prefix(sizeof header);
  Bitmap bitmap;
  bitmap.width = header.width;
  bitmap.height = header.height;
  bitmap.opaque = header.opaque;
  bitmap.pixels.resize(bytes.size() / sizeof(Pixel));
  std::memcpy(bitmap.pixels.data(), bytes.data(), bytes.size());
  return bitmap;
}

}  // namespace

Result<OtherProcess> OtherProcess::start(const Draw& draw) {
  auto process = ChildProcess::start([&]() -> Result<std::string> {
    const auto picture = draw();
    if (!picture) return picture.failure();
    return bytesOf(*picture);
  });
  if (!process) return process.failure();
  return OtherProcess(*std::move(process));
}

Result<Bitmap> OtherProcess::picture() {
  const auto bytes = process_.bytes();
  if (bytes) return bitmapOf(*bytes);
  if (bytes.failure().error != ECHILD) return bytes.failure();
  return Failure(ECHILD, "the process that draws the other picture died");
}

}  // namespace tools::render
