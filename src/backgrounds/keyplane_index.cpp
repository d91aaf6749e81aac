#include "backgrounds/keyplane_index.h"

#include <algorithm>

#include "support/characters.h"

namespace prismal {

namespace {

/// Whether `part`, in small letters, occurs in `text` in any case.
bool containsIgnoringCase(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(),
                     [](char a, char b) { return lowerCase(a) == b; }) != text.end();
}

struct NamedIndex {
  std::string_view part;
  PMKeyplaneIndex index;
};

// Alternate first: its name contains the plain one's.
constexpr NamedIndex kNamedIndexes[] = {
    {"capital-letters", PMKeyplaneCapitalLetters},
    {"small-letters", PMKeyplaneSmallLetters},
    {"numbers-and-punctuation-alternate", PMKeyplaneNumbersAlternate},
    {"numbers-and-punctuation", PMKeyplaneNumbers},
};

}  // namespace

PMKeyplaneIndex keyplaneIndex(std::optional<std::string_view> name, bool isLetters,
                              bool isShiftKeyplane) {
  if (name) {
    for (const NamedIndex& named : kNamedIndexes) {
      if (containsIgnoringCase(*name, named.part)) return named.index;
    }
  }
  if (isLetters) return isShiftKeyplane ? PMKeyplaneCapitalLetters : PMKeyplaneSmallLetters;
  return isShiftKeyplane ? PMKeyplaneNumbersAlternate : PMKeyplaneNumbers;
}

PMKeyplaneIndex PMGetKeyplaneIndex(platform::UIKBTree keyplane) {
  return keyplaneIndex(keyplane.name(), keyplane.isLetters(), keyplane.isShiftKeyplane());
}

}  // namespace prismal
