// Themes as JSON: the reader of `prismal convert`, and the writers of all three forms behind it.

#include "convert/json_reader.h"
#include "support/plist_checks.h"
#include "support/target.h"

int LLVMFuzzerInitialize(int*, char***) {
  return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const auto reading = tools::convert::readJson(fuzz::textOf(bytes, size));
  fuzz::requireReadingOrReason(reading.list, reading.reason);
  if (!reading) return 0;
  fuzz::requireWritableAsJson(reading.list);
  fuzz::requireWritable(reading.list);
  return 0;
}
