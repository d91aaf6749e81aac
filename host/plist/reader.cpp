#include "host/plist/reader.h"

#include "host/plist/binary_format.h"

namespace host::plist {

Reading read(std::string_view bytes) {
  return bytes.starts_with(binary::kMagic) ? readBinary(bytes) : readXml(bytes);
}

}  // namespace host::plist
