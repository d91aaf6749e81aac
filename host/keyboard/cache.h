#pragma once

#include <string>
#include <vector>

#include "host/keyboard/key_picture_store.h"
#include "host/keyboard/object_variable.h"
#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace host::keyboard {

/// The backing store of the keyboard cache: drawn keys in groups.
struct CacheStoreObject final : objc_object {
  /// A store of the process's device. `groupNames` are groups that it is said to have besides those
  /// of its pictures.
  explicit CacheStoreObject(std::vector<std::string> groupNames);
  /// The names of all groups.
  std::vector<std::string> allGroups() const;
  std::vector<std::string> groups;
  KeyPictureStore pictures;
};

struct CacheObject final : objc_object {
  /// With a store.
  CacheObject();
  ObjectVariable store;  ///< the instance variable "_store"
};

/// Defines `UIKeyboardCache`.
void defineCacheClass();

/// The one cache of the process; first asked for after the process was started.
CacheObject& sharedCache();

/// Asks the class whether the keyboard may use its cache, as the keyboard does: through its method
/// table.
bool askCacheEnabled();

/// The pictures of the keyboard's cache; null when it has no store.
KeyPictureStore* cachedPictures();

}  // namespace host::keyboard
