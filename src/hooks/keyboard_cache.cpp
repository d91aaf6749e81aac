#include "hooks/keyboard_cache.h"

#include "hooks/class_references.h"
#include "platform/foundation.h"
#include "platform/keyboard.h"

namespace prismal {

void PMPurgeKeyboardCache() {
  const int status =
      platform::system("/bin/rm -rf /var/mobile/Library/Caches/com.apple.keyboards/*");
  platform::NSLog("PM: Clear Keyboard Cache: %d", {status});
  const auto cache = platform::UIKeyboardCache::sharedInstance(classes.UIKeyboardCache);
  const platform::UIKBCacheStore store(cache.valueForKey("_store").get());
  store.removeImagesInGroups(store.allGroups());
  store.purge();
  cache.clearNonPersistentCache();
}

bool PMCacheEnabledReplacement(platform::Class, platform::SEL) {
  return false;
}

}  // namespace prismal
