#include "host/runtime/class_table.h"
#include "host/system/process.h"
#include "platform/foundation.h"

namespace platform {

NSBundle NSBundle::mainBundle() {
  static auto* const bundle = new objc_object(host::runtime::defineClass("NSBundle"));
  return NSBundle(bundle);
}

std::optional<std::string_view> NSBundle::infoDictionaryValueForKey(std::string_view key) const {
  const auto& identifier = host::system::process().bundleIdentifier();
  if (key != "CFBundleIdentifier" || !identifier) return std::nullopt;
  return *identifier;
}

}  // namespace platform
