#include "hooks/library_load.h"

#include "hooks/class_references.h"
#include "hooks/hook_table.h"
#include "hooks/keyboard_cache.h"
#include "hooks/process_filter.h"
#include "platform/foundation.h"
#include "support/no_throw.h"

namespace prismal {

namespace {

void purgeAfterLaunch() {
  platform::NSNotificationCenter::defaultCenter().addObserverForName(
      platform::UIApplicationDidFinishLaunchingNotification,
      platform::NSOperationQueue::mainQueue(), [] { withoutThrowing(PMPurgeKeyboardCache); });
}

void loadIntoHost() {
  const platform::NSAutoreleasePool pool;
  const auto identifier =
      platform::NSBundle::mainBundle().infoDictionaryValueForKey("CFBundleIdentifier");
  platform::NSLog("QZ Bundle: %@", {identifier});
  const HostKind kind = classifyHost(identifier);
  if (kind == HostKind::kLeftAlone) return;

  lookUpKeyboardCacheClass();
  // One step that fails must not keep the hooks from being installed.
  withoutThrowing(kind == HostKind::kSpringBoard ? purgeAfterLaunch : PMPurgeKeyboardCache);
  lookUpOtherClasses();
  installHooks();
}

}  // namespace

}  // namespace prismal

void PMLibraryLoad() {
  prismal::withoutThrowing(prismal::loadIntoHost);
}
