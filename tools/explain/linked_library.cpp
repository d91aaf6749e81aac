#include "explain/linked_library.h"

#include "hooks/class_references.h"
#include "host/system/log.h"
#include "settings/settings_store.h"

namespace tools::explain {

void readyLinkedLibrary() {
  host::system::setLogEcho({});
  prismal::lookUpKeyboardCacheClass();
  prismal::lookUpOtherClasses();
  prismal::PMInitializeSettings();
}

}  // namespace tools::explain
