#include "host/files/notification_name.h"

#include <limits.h>

namespace host::files {
namespace {

constexpr bool standsForItself(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' ||
         c == '_' || c == '-';
}

}  // namespace

std::optional<std::string> fileNameOfNotification(std::string_view name) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string file;
  for (const char c : name) {
    if (standsForItself(c) && (c != '.' || !file.empty())) {
      file += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      file.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
    }
    if (file.size() > NAME_MAX) return std::nullopt;
  }
  if (file.empty()) return std::nullopt;
  return file;
}

}  // namespace host::files
