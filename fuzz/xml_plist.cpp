// The reader of XML property lists, and the writers of both forms behind it.

#include "convert/difference.h"
#include "host/plist/key_positions.h"
#include "host/plist/reader.h"
#include "support/plist_checks.h"
#include "support/require.h"
#include "support/target.h"

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string_view text = fuzz::textOf(bytes, size);
  const auto reading = host::plist::readXml(text);
  fuzz::requireReadingOrReason(reading.list, reading.reason);

  host::plist::KeyPositions keys;
  const auto withKeys = host::plist::readXml(text, keys);
  fuzz::require(withKeys.reason == reading.reason, "noting the keys changes no reading",
                withKeys.reason);
  if (!reading) return 0;
  fuzz::require(!tools::convert::firstDifference(reading.list, withKeys.list),
                "noting the keys changes no value");
  fuzz::requireWritable(reading.list);
  return 0;
}
