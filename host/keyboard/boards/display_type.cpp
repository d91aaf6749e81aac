#include "host/keyboard/boards/display_type.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace host::boards {
namespace {

struct Entry {
  DisplayType type;
  std::string_view name;
};

// A condition's values lose their "-" before they are compared, so no name has one.
constexpr Entry kNames[] = {
    {DisplayType::letter, "UIKBKeyDisplayTypeLetter"},
    {DisplayType::shift, "UIKBKeyDisplayTypeShift"},
    {DisplayType::delete_left, "UIKBKeyDisplayTypeDelete"},
    {DisplayType::space, "UIKBKeyDisplayTypeSpace"},
    {DisplayType::return_key, "UIKBKeyDisplayTypeReturn"},
    {DisplayType::more, "UIKBKeyDisplayTypeMore"},
    {DisplayType::international, "UIKBKeyDisplayTypeInternational"},
    {DisplayType::dictation, "UIKBKeyDisplayTypeDictation"},
    {DisplayType::dismiss, "UIKBKeyDisplayTypeDismiss"},
    {DisplayType::undo, "UIKBKeyDisplayTypeUndo"},
    {DisplayType::redo, "UIKBKeyDisplayTypeRedo"},
};
constexpr std::string_view kUnknown = "UIKBKeyDisplayTypeUnknown";
constexpr std::string_view kPrefix = "UIKBKeyDisplayType";
static_assert(kPrefix.size() == 18);

constexpr bool isNamed(std::string_view name) {
  return name.starts_with(kPrefix) && name.size() > kPrefix.size() && name.find('-') == name.npos;
}

constexpr bool isIndexedByType() {
  for (std::size_t i = 0; i < std::size(kNames); ++i) {
    if (static_cast<std::size_t>(kNames[i].type) != i) return false;
  }
  return true;
}

static_assert(isIndexedByType());
static_assert(isNamed(kUnknown) && std::ranges::all_of(kNames, isNamed, &Entry::name));

}  // namespace

std::string_view displayTypeName(int number) {
  if (number < 0 || number >= static_cast<int>(std::size(kNames))) return kUnknown;
  return kNames[number].name;
}

}  // namespace host::boards
