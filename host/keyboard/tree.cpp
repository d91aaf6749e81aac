#include "host/keyboard/tree.h"

#include <utility>

#include "host/keyboard/boards/display_type.h"
#include "host/runtime/class_table.h"

namespace host::keyboard {

namespace {

std::map<int, std::string>& displayTypeNames() {
  static std::map<int, std::string> names;
  return names;
}

/// A member of the tree behind a handle; of a null one, what a value-initialised member is.
template <class Value>
Value valueOf(platform::UIKBTree handle, Value TreeObject::*member) {
  const auto* const tree = runtime::as<TreeObject>(handle);
  return tree ? tree->*member : Value();
}

}  // namespace

TreeObject::TreeObject() : objc_object(runtime::defineClass("UIKBTree")) {}

void setDisplayTypeNames(std::map<int, std::string> names) {
  displayTypeNames() = std::move(names);
}

}  // namespace host::keyboard

namespace platform {

using host::keyboard::TreeObject;
using host::keyboard::valueOf;

std::optional<std::string_view> UIKBTree::name() const {
  const auto* const tree = host::runtime::as<TreeObject>(*this);
  if (!tree || !tree->name) return std::nullopt;
  return *tree->name;
}

int UIKBTree::visualStyle() const {
  return valueOf(*this, &TreeObject::visualStyle);
}
int UIKBTree::type() const {
  return valueOf(*this, &TreeObject::type);
}
bool UIKBTree::isLetters() const {
  return valueOf(*this, &TreeObject::isLetters);
}
bool UIKBTree::isShiftKeyplane() const {
  return valueOf(*this, &TreeObject::isShiftKeyplane);
}
int UIKBTree::displayType() const {
  return valueOf(*this, &TreeObject::displayType);
}
int UIKBTree::displayTypeHint() const {
  return valueOf(*this, &TreeObject::displayTypeHint);
}
int UIKBTree::displayRowHint() const {
  return valueOf(*this, &TreeObject::displayRowHint);
}
int UIKBTree::state() const {
  return valueOf(*this, &TreeObject::state);
}

std::string_view enumStringForDisplayType(int displayType) {
  const auto& names = host::keyboard::displayTypeNames();
  const auto found = names.find(displayType);
  return found == names.end() ? host::boards::displayTypeName(displayType)
                              : std::string_view(found->second);
}

}  // namespace platform
