#pragma once

#include <string>
#include <vector>

#include "host/keyboard/object_variable.h"
#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

/// The backing store of the keyboard cache: drawn keys in groups.
struct CacheStoreObject final : objc_object {
  explicit CacheStoreObject(std::vector<std::string> groupNames);
  std::vector<std::string> groups;
};

struct CacheObject final : objc_object {
  CacheObject();
  ObjectVariable store;  ///< the instance variable "_store"
};

/// Defines `UIKeyboardCache`.
void defineCacheClass();

/// The one cache of the process.
CacheObject& sharedCache();

/// Asks the class whether the keyboard may use its cache, as the keyboard does: through its method
/// table.
bool askCacheEnabled();

}  // namespace host::keyboard
