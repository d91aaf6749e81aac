#include "host/plist/reader.h"

#include "host/plist/binary_format.h"
#include "host/plist/key_positions.h"

namespace host::plist {

namespace {

/// Whether there is any point in asking an XML parser, whose complaints about a picture or a letter
/// would tell nobody anything.
bool mayBeXml(std::string_view bytes) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  const auto first = bytes.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && bytes[first] == '<';
}

template <class... Keys>
Reading readEither(std::string_view bytes, Keys&... keys) {
  if (bytes.starts_with(binary::kMagic)) return readBinary(bytes, keys...);
  if (mayBeXml(bytes)) return readXml(bytes, keys...);
  const bool isUtf16 = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
  if (isUtf16) return {{}, "line 1, column 1: a text in UTF-16, where UTF-8 is read"};
  return {{}, "line 1, column 1: no property list, neither XML nor binary"};
}

}  // namespace

Reading read(std::string_view bytes) {
  return readEither(bytes);
}

Reading read(std::string_view bytes, KeyPositions& keys) {
  return readEither(bytes, keys);
}

}  // namespace host::plist
