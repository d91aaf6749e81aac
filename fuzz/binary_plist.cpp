// The reader of binary property lists, and the writers of both forms behind it. What does not begin
// like a binary list is taken for its objects, each behind its length, and gets the offsets and the
// trailer that it needs: bytes that are changed one by one hardly ever keep those in order.

#include <string>

#include "host/plist/binary_format.h"
#include "host/plist/reader.h"
#include "support/byte_source.h"
#include "support/peer.h"
#include "support/plist_checks.h"
#include "support/require.h"
#include "support/target.h"
#include "support/weight.h"

namespace {

namespace binary = host::plist::binary;

void appendBigEndian(std::string& bytes, std::size_t number, std::size_t size) {
  while (size-- > 0) bytes += static_cast<char>(number >> (8 * size) & 0xFFU);
}

std::string assembled(fuzz::ByteSource objects) {
  constexpr std::size_t kOffsetSize = 2;
  const std::size_t referenceSize = 1 + objects.below(2);
  std::string bytes(binary::kHeader);
  std::string table;
  std::size_t count = 0;
  for (; !objects.empty(); ++count) {
    appendBigEndian(table, bytes.size(), kOffsetSize);
    bytes += objects.run();
  }
  const std::size_t tableOffset = bytes.size();
  bytes.append(table).append(binary::kTrailerPadding, '\0');
  appendBigEndian(bytes, kOffsetSize, 1);
  appendBigEndian(bytes, referenceSize, 1);
  appendBigEndian(bytes, count, 8);
  appendBigEndian(bytes, 0, 8);  // the root
  appendBigEndian(bytes, tableOffset, 8);
  return bytes;
}

}  // namespace

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view input = fuzz::textOf(bytes, size);
  const std::string made =
      input.starts_with(binary::kMagic) ? "" : assembled(fuzz::ByteSource(input));
  const std::string_view file = made.empty() ? input : made;

  const auto reading = host::plist::readBinary(file);
  fuzz::requireReadingOrReason(reading.list, reading.reason);
  if (!reading || !fuzz::Weight::isLight(reading.list)) return 0;
  // It may refuse what we read; read it as something else it may not.
  fuzz::require(fuzz::peerOpinion(file, reading.list) != fuzz::Opinion::kDifferent,
                "libplist reads a binary list alike");
  fuzz::requireWritable(reading.list);
  return 0;
}
