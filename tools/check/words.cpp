#include "check/words.h"

#include "host/plist/description.h"
#include "host/plist/utf8.h"

namespace tools::check {

using Type = platform::PropertyListView::Type;

std::string inQuotes(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  return "\"" + inOneLine(text, kLongest) + "\"";
}

std::uint32_t charactersOf(std::string_view text) {
  std::uint32_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(host::plist::firstUtf8Character(text).length);
  return count;
}

std::string_view typeOf(platform::PropertyListView value) {
  switch (value.type()) {
    case Type::kBoolean:
      return "a boolean";
    case Type::kInteger:
      return "an integer";
    case Type::kReal:
      return "a real";
    case Type::kString:
      return "a string";
    case Type::kDate:
      return "a date";
    case Type::kData:
      return "data";
    case Type::kArray:
      return "an array";
    case Type::kDictionary:
      return "a dictionary";
    case Type::kNone:
      break;
  }
  return "nothing";
}

std::string counted(std::size_t count, std::string_view singular, std::string_view ending) {
  std::string text = std::to_string(count) + " " + std::string(singular);
  if (count != 1) text += ending;
  return text;
}

std::string listed(std::span<const std::string> things) {
  constexpr std::size_t kMost = 4;
  const bool isLong = things.size() > kMost;
  const std::size_t shown = isLong ? kMost - 1 : things.size();
  std::string text;
  for (std::size_t i = 0; i < shown; ++i) {
    if (i > 0) text += i + 1 == things.size() ? " and " : ", ";
    text += things[i];
  }
  if (isLong) text += " and " + std::to_string(things.size() - shown) + " more";
  return text;
}

std::string whereIs(const Place& place) {
  const auto line = place.position.line;
  return line > 0 ? "line " + std::to_string(line) : inOneLine(place.path, 80);
}

}  // namespace tools::check
