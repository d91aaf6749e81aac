#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host::plist::samples {

/// The sizes and numbers of a binary file that a test may want wrong.
struct Layout {
  std::size_t offsetSize = 1;
  std::size_t referenceSize = 1;
  std::uint64_t root = 0;
  /// What the trailer adds to the truth.
  std::uint64_t surplusObjects = 0;
  std::uint64_t surplusTableOffset = 0;
};

inline std::string bigEndian(std::uint64_t number, std::size_t size) {
  std::string bytes;
  while (size-- > 0) bytes += static_cast<char>(number >> (8 * size) & 0xFFU);
  return bytes;
}

/// The binary file that holds `objects`, each given with its marker; object 0 is the root.
inline std::string binaryFile(const std::vector<std::string>& objects, Layout layout = {}) {
  std::string bytes = "bplist00";
  std::string table;
  for (const std::string& object : objects) {
    table += bigEndian(bytes.size(), layout.offsetSize);
    bytes += object;
  }
  const std::size_t tableOffset = bytes.size();
  return bytes + table + std::string(6, '\0') + bigEndian(layout.offsetSize, 1) +
         bigEndian(layout.referenceSize, 1) + bigEndian(objects.size() + layout.surplusObjects, 8) +
         bigEndian(layout.root, 8) + bigEndian(tableOffset + layout.surplusTableOffset, 8);
}

inline std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  for (; times > 0; --times) all += text;
  return all;
}

/// Every type there is, and texts that each form has to take care with.
inline constexpr std::string_view kEverything =
    "<plist version=\"1.0\"><dict>"
    "<key>array</key><array><string>A</string><array/><dict/></array>"
    "<key>data</key><data>AAECA/8=</data>"
    "<key>date</key><date>2013-09-18T00:00:00Z</date>"
    "<key>false</key><false/>"
    "<key>int</key><integer>-9223372036854775808</integer>"
    "<key>ints</key><array><integer>255</integer><integer>256</integer><integer>65536</integer>"
    "<integer>4294967296</integer><integer>9223372036854775807</integer></array>"
    "<key>real</key><real>0.1</real>"
    "<key>text &amp; &lt;tags&gt;</key><string> a\r\nb&#13;\tc </string>"
    "<key>true</key><true/>"
    "<key>wide \xE2\x82\xAC</key><string>\xF0\x9F\x98\x80 fifteen and more</string>"
    "</dict></plist>";

}  // namespace host::plist::samples
