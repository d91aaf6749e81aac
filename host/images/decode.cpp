#include "host/images/decode.h"

#include <new>

#include "host/images/decode_formats.h"

namespace host::images {
namespace {

struct Format {
  std::string_view magic;
  DecodeResult (*decode)(std::string_view file);
};

constexpr Format kFormats[] = {
    {"\x89PNG\r\n\x1a\n", decodePng},
    {"\xff\xd8\xff", decodeJpeg},
};

}  // namespace

DecodeResult decode(std::string_view file) {
  for (const Format& format : kFormats) {
    if (!file.starts_with(format.magic)) continue;
    try {
      return format.decode(file);
    } catch (const std::bad_alloc&) {
      return noPicture("Not enough memory");
    }
  }
  return noPicture("Neither PNG nor JPEG");
}

DecodeResult decode(std::span<const std::byte> file) {
  return decode(std::string_view(reinterpret_cast<const char*>(file.data()), file.size()));
}

}  // namespace host::images
