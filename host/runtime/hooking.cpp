#include "host/runtime/hooking.h"

#include <algorithm>
#include <vector>

#include "host/runtime/class_table.h"

namespace host::runtime {

namespace {

struct FunctionEntry {
  std::string name;
  platform::IMP symbol;
  platform::IMP* implementation;
};

std::vector<FunctionEntry>& functions() {
  static std::vector<FunctionEntry>& entries = *new std::vector<FunctionEntry>;
  return entries;
}

std::vector<std::string>& hookedNames() {
  static std::vector<std::string>& names = *new std::vector<std::string>;
  return names;
}

void noteHook(std::string name) {
  record(Event::Kind::kHook, name);
  hookedNames().push_back(std::move(name));
}

}  // namespace

void registerHookableFunction(std::string_view name, platform::IMP symbol,
                              platform::IMP* implementation) {
  functions().push_back({std::string(name), symbol, implementation});
}

void recordIfHooked(std::string_view name) {
  if (std::ranges::find(hookedNames(), name) != hookedNames().end()) {
    record(Event::Kind::kPrevious, name);
  }
}

}  // namespace host::runtime

namespace platform {

void MSHookFunction(IMP symbol, IMP replacement, IMP* previous) {
  auto& functions = host::runtime::functions();
  const auto found = std::ranges::find(functions, symbol, &host::runtime::FunctionEntry::symbol);
  if (found == functions.end()) return;
  if (previous) *previous = *found->implementation;
  *found->implementation = replacement;
  host::runtime::noteHook(found->name);
}

void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous) {
  auto* const target = dynamic_cast<objc_class*>(cls.get());
  if (!target) {
    // A device's engine would not survive this; here it shows among the hooks.
    host::runtime::record(host::runtime::Event::Kind::kHook,
                          "-[(null) " + selector.get()->name + "]");
    return;
  }
  const IMP current = host::runtime::implementation(target, selector);
  if (!current) return;
  if (previous) *previous = current;
  host::runtime::addMethod(target, selector.get()->name, replacement);
  host::runtime::noteHook(host::runtime::methodName(target, selector));
}

}  // namespace platform
