// PNG and JPEG files. A PNG is read as it is and with its chunks' checksums put right, which bytes
// that are changed one by one never are.

#include <algorithm>
#include <string>
#include <zlib.h>

#include "host/images/decode.h"
#include "host/images/encode.h"
#include "support/require.h"
#include "support/target.h"

namespace {

using host::images::Bitmap;
using host::images::Pixel;

constexpr std::string_view kPngMagic = "\x89PNG\r\n\x1a\n";

std::size_t bigEndian(std::string_view bytes) {
  std::size_t number = 0;
  for (const char byte : bytes) number = number << 8U | static_cast<unsigned char>(byte);
  return number;
}

/// The file with the checksum that each of its chunks should have.
std::string withChecksums(std::string file) {
  constexpr std::size_t kField = 4;  // bytes of a length, a name and a checksum each
  for (std::size_t at = kPngMagic.size(); file.size() - at >= 3 * kField;) {
    const std::string_view rest = std::string_view(file).substr(at);
    const std::size_t length = bigEndian(rest.substr(0, kField));
    if (length > rest.size() - 3 * kField) break;
    const std::string_view checked = rest.substr(kField, kField + length);
    const auto sum = ::crc32(0, reinterpret_cast<const Bytef*>(checked.data()),
                             static_cast<uInt>(checked.size()));
    at += 2 * kField + length;
    for (std::size_t i = 0; i < kField; ++i) {
      file[at + i] = static_cast<char>(sum >> (8 * (kField - 1 - i)) & 0xFFU);
    }
    at += kField;
  }
  return file;
}

/// Whether a PNG says that it has many pixels. All that is done then is to make room for them,
/// which takes as long as a thousand small files.
bool isLarge(std::string_view file) {
  constexpr std::size_t kMostPixels = 1 << 20;
  constexpr std::size_t kWidthOffset = 16;
  constexpr std::size_t kHeightOffset = 20;
  if (file.size() < kHeightOffset + 4) return false;
  return bigEndian(file.substr(kWidthOffset, 4)) * bigEndian(file.substr(kHeightOffset, 4)) >
         kMostPixels;
}

bool isPremultiplied(Pixel pixel) {
  const Pixel alpha = pixel >> 24U;
  return (pixel >> 16U & 0xFFU) <= alpha && (pixel >> 8U & 0xFFU) <= alpha &&
         (pixel & 0xFFU) <= alpha;
}

bool isOpaque(Pixel pixel) {
  return pixel >> 24U == 255;
}

/// A decoded bitmap keeps what its type promises, and is the same once encoded and decoded again.
void requireSound(const Bitmap& bitmap) {
  constexpr std::size_t kMostPixels = 1 << 14;
  fuzz::require(bitmap.isValid(), "there are as many pixels as the sides say");
  if (bitmap.pixels.size() > kMostPixels) return;
  fuzz::require(std::ranges::all_of(bitmap.pixels, isPremultiplied), "no colour exceeds its alpha");
  fuzz::require(bitmap.opaque == std::ranges::all_of(bitmap.pixels, isOpaque),
                "opaque says whether all pixels are");
  const auto again = host::images::decode(host::images::encodePng(bitmap));
  fuzz::require(again && *again.bitmap == bitmap, "encoded and decoded it is the same",
                again.reason);
}

void decode(std::string_view file) {
  const auto decoded = host::images::decode(file);
  fuzz::require(decoded.reason.empty() == static_cast<bool>(decoded), "a bitmap or a reason");
  if (decoded) requireSound(*decoded.bitmap);
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view file = fuzz::textOf(bytes, size);
  const bool isPng = file.starts_with(kPngMagic);
  if (isPng && isLarge(file)) return 0;
  decode(file);
  if (isPng) decode(withChecksums(std::string(file)));
  return 0;
}
