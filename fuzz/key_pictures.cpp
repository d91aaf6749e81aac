// Files of the keyboard's picture cache. A file is read as it is and with the checksum that it
// should have, which bytes that are changed one by one never have.

#include <cstring>
#include <string>

#include "host/keyboard/checksum.h"
#include "host/keyboard/key_picture_file.h"
#include "support/require.h"
#include "support/target.h"

namespace {

constexpr std::size_t kChecksumOffset = 16;
constexpr std::size_t kBodyOffset = 24;

std::string withChecksum(std::string file) {
  const std::uint64_t sum = host::keyboard::checksum(std::string_view(file).substr(kBodyOffset));
  std::memcpy(file.data() + kChecksumOffset, &sum, sizeof sum);
  return file;
}

void decode(std::string_view file) {
  const auto group = host::keyboard::decodeGroup(file);
  if (!group) return;
  fuzz::require(host::keyboard::encodeGroup(*group) == file,
                "what is taken is what would be written");
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view file = fuzz::textOf(bytes, size);
  decode(file);
  if (file.size() >= kBodyOffset) decode(withChecksum(std::string(file)));
  return 0;
}
