#include "host/images/decode.h"

#include <new>

#include "host/images/decode_formats.h"

namespace host::images {
namespace {

struct Format {
  std::string_view magic;
  DecodeResult (*decode)(std::string_view file, std::uint64_t maxPixels);
};

constexpr Format kFormats[] = {
    {"\x89PNG\r\n\x1a\n", decodePng},
    {"\xff\xd8\xff", decodeJpeg},
};

}  // namespace

DecodeResult decode(std::string_view file, std::uint64_t maxPixels) {
  if (file.size() > kMaxFileBytes) return noPicture("Too large");
  for (const Format& format : kFormats) {
    if (!file.starts_with(format.magic)) continue;
    try {
      return format.decode(file, maxPixels);
    } catch (const std::bad_alloc&) {
      return noPicture("Not enough memory");
    }
  }
  return noPicture("Neither PNG nor JPEG");
}

DecodeResult decode(std::span<const std::byte> file, std::uint64_t maxPixels) {
  const auto* const bytes = reinterpret_cast<const char*>(file.data());
  return decode(std::string_view(bytes, file.size()), maxPixels);
}

}  // namespace host::images
