#include "host/runtime/class_table.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace host::runtime {

namespace {

struct Table {
  std::map<std::string, objc_class*, std::less<>> classes;
  std::set<std::string, std::less<>> hidden;
  std::vector<std::unique_ptr<objc_class>> owned;
  std::map<std::string, objc_selector, std::less<>> selectors;
  std::function<void(platform::Object, std::string_view)> keyValueObserver;
};

Table& table() {
  // Never destroyed: objects that outlive main still point to their classes.
  static Table& classes = *new Table;
  return classes;
}

objc_class* makeClass(std::string_view name, objc_class* superclass) {
  auto& owned = table().owned;
  owned.push_back(std::make_unique<objc_class>(std::string(name),
                                               superclass ? superclass->isa : nullptr, nullptr));
  owned.push_back(std::make_unique<objc_class>(std::string(name), superclass, owned.back().get()));
  return owned.back().get();
}

}  // namespace

objc_class* defineClass(std::string_view name, objc_class* superclass) {
  auto& classes = table().classes;
  if (const auto found = classes.find(name); found != classes.end()) return found->second;
  return classes.emplace(name, makeClass(name, superclass)).first->second;
}

objc_class* makeAnonymousClass(std::string_view name, objc_class* superclass) {
  return makeClass(name, superclass);
}

void hideClass(std::string_view name) {
  table().hidden.emplace(name);
}

bool hasClass(std::string_view name) {
  return table().classes.contains(name) && !table().hidden.contains(name);
}

void addMethod(objc_class* cls, std::string_view selector, platform::IMP implementation) {
  const platform::SEL name = platform::sel_registerName(selector);
  const auto found = std::ranges::find(cls->methods, name, &objc_class::Method::selector);
  if (found == cls->methods.end()) {
    cls->methods.push_back({name, implementation});
  } else {
    found->implementation = implementation;
  }
}

void addVariable(objc_class* cls, objc_ivar variable) {
  cls->variables.push_back(std::move(variable));
}

void removeVariable(objc_class* cls, std::string_view name) {
  std::erase_if(cls->variables, [&](const objc_ivar& variable) { return variable.name == name; });
}

platform::IMP implementation(const objc_class* cls, platform::SEL selector) {
  for (; cls; cls = cls->superclass) {
    for (const objc_class::Method& method : cls->methods) {
      if (method.selector == selector) return method.implementation;
    }
  }
  return nullptr;
}

void setKeyValueObserver(std::function<void(platform::Object, std::string_view)> observer) {
  table().keyValueObserver = std::move(observer);
}

void tellKeyValueObserver(platform::Object object, std::string_view key) {
  if (table().keyValueObserver) table().keyValueObserver(object, key);
}

const objc_ivar* findVariable(const objc_class* cls, std::string_view name) {
  for (; cls; cls = cls->superclass) {
    for (const objc_ivar& variable : cls->variables) {
      if (variable.name == name) return &variable;
    }
  }
  return nullptr;
}

std::string methodName(const objc_class* cls, platform::SEL selector) {
  std::string name(cls->isMetaclass() ? "+[" : "-[");
  return name.append(cls->name).append(" ").append(selector.get()->name).append("]");
}

}  // namespace host::runtime

namespace platform {

using host::runtime::table;

Class objc_getClass(std::string_view name) {
  return host::runtime::hasClass(name) ? Class(table().classes.find(name)->second) : Class();
}

Class object_getClass(Object object) {
  return object ? Class(object.get()->isa) : Class();
}

SEL sel_registerName(std::string_view name) {
  auto& selectors = table().selectors;
  auto found = selectors.find(name);
  if (found == selectors.end()) {
    found = selectors.emplace(name, objc_selector{std::string(name)}).first;
  }
  return SEL(&found->second);
}

Ivar class_getInstanceVariable(Class cls, std::string_view name) {
  return Ivar(host::runtime::findVariable(host::runtime::as<const objc_class>(cls), name));
}

std::ptrdiff_t ivar_getOffset(Ivar variable) {
  return variable ? variable.get()->offset : 0;
}

}  // namespace platform
