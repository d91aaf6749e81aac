#include "byte_strings.h"

#include <cstdint>
#include <cstring>

namespace tools {

namespace {

using Size = std::uint64_t;

}  // namespace

std::string joined(const std::vector<std::string>& strings) {
  std::string bytes;
  for (const std::string& string : strings) {
    const Size size = string.size();
    bytes.append(reinterpret_cast<const char*>(&size), sizeof size).append(string);
  }
  return bytes;
}

std::optional<std::vector<std::string>> parted(std::string_view bytes) {
  std::vector<std::string> strings;
  while (!bytes.empty()) {
    Size size = 0;
    if (bytes.size() < sizeof size) return std::nullopt;
    std::memcpy(&size, bytes.data(), sizeof size);
    bytes.remove_prefix(sizeof size);
    if (size > bytes.size()) return std::nullopt;
    strings.emplace_back(bytes.substr(0, size));
    bytes.remove_prefix(size);
  }
  return strings;
}

}  // namespace tools
