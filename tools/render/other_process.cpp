#include "render/other_process.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "render/one_view.h"

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

/// Of bytes that another process has made, and may have been made to make otherwise.
Result<Bitmap> bitmapOf(std::string_view bytes) {
  const Failure nonsense(EBADMSG, "the process that draws sent something else than a picture");
  Header header;
  if (bytes.size() < sizeof header) return nonsense;
  std::memcpy(&header, bytes.data(), sizeof header);
  bytes.remove_prefix(sizeof header);
  Bitmap bitmap;
  bitmap.width = header.width;
  bitmap.height = header.height;
  bitmap.opaque = header.opaque;
  bitmap.pixels.resize(bytes.size() / sizeof(Pixel));
  if (!bitmap.isValid()) return nonsense;
  std::memcpy(bitmap.pixels.data(), bytes.data(), bitmap.pixels.size() * sizeof(Pixel));
  return bitmap;
}

}  // namespace

Result<OtherProcess> OtherProcess::start(const keyboard::Dress& dress, const keyboard::View& view,
                                         double scale) {
  const auto draw = [&](const keyboard::Dress& worn) -> Result<std::string> {
    const auto picture = drawView(worn, view, scale);
    if (!picture) return picture.failure();
    return bytesOf(*picture);
  };
  auto process = keyboard::KeyboardChild::start(dress, draw);
  if (!process) return process.failure();
  return OtherProcess(*std::move(process));
}

Result<Bitmap> OtherProcess::picture() {
  const auto bytes = process_.bytes();
  if (!bytes) return bytes.failure();
  return bitmapOf(*bytes);
}

}  // namespace tools::render
