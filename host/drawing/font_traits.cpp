#include "host/drawing/font_traits.h"

#include <algorithm>
#include <iterator>

namespace host::drawing {
namespace {

struct Hint {
  std::string_view word;
  std::string_view weight;
};

// A word stands before any word that it contains.
constexpr Hint kHints[] = {
    {"semibold", "SemiBold"},     {"demi", "SemiBold"}, {"extrabold", "ExtraBold"},
    {"ultrabold", "ExtraBold"},   {"bold", "Bold"},     {"black", "Black"},
    {"heavy", "Black"},           {"medium", "Medium"}, {"extralight", "ExtraLight"},
    {"ultralight", "ExtraLight"}, {"light", "Light"},   {"thin", "Thin"},
};

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool contains(std::string_view text, std::string_view word) {
  const auto same = [](char a, char b) { return lower(a) == b; };
  return std::search(text.begin(), text.end(), word.begin(), word.end(), same) != text.end();
}

}  // namespace

FontTraits traitsOf(std::string_view name) {
  FontTraits traits;
  const auto hint =
      std::ranges::find_if(kHints, [&](const Hint& each) { return contains(name, each.word); });
  if (hint != std::end(kHints)) traits.weight = hint->weight;
  traits.italic = contains(name, "italic") || contains(name, "oblique");
  return traits;
}

std::string systemFontName(FontTraits traits) {
  std::string name = "Inter-";
  if (!traits.italic) return name.append(traits.weight);
  if (traits.weight != "Regular") name.append(traits.weight);
  return name.append("Italic");
}

}  // namespace host::drawing
