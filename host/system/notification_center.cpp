#include "host/system/notification_center.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/runtime/class_table.h"
#include "host/runtime/trace.h"
#include "host/system/process.h"
#include "platform/foundation.h"

namespace host::system {

namespace {

using Blocks = std::vector<std::function<void()>>;

std::map<std::string, Blocks, std::less<>>& observers() {
  static auto& blocks = *new std::map<std::string, Blocks, std::less<>>;
  return blocks;
}

/// Observations hold until the process ends, so their tokens are kept as long.
void keepForever(files::NotificationWatcher::Token token) {
  static auto& tokens = *new std::vector<files::NotificationWatcher::Token>;
  tokens.push_back(std::move(token));
}

/// An object that is only told things, of a class of that name.
template <class Handle>
Handle onlyObject(std::string_view className) {
  static auto* const object = new objc_object(runtime::defineClass(className));
  return Handle(object);
}

}  // namespace

void postNotification(std::string_view name) {
  const auto found = observers().find(name);
  if (found == observers().end()) return;
  for (const auto& block : found->second) process().runLoop().post(block);
}

}  // namespace host::system

namespace platform {

using host::runtime::Event;
using host::system::process;

const char* const UIApplicationDidFinishLaunchingNotification =
    "UIApplicationDidFinishLaunchingNotification";

NSOperationQueue NSOperationQueue::mainQueue() {
  return host::system::onlyObject<NSOperationQueue>("NSOperationQueue");
}

NSNotificationCenter NSNotificationCenter::defaultCenter() {
  return host::system::onlyObject<NSNotificationCenter>("NSNotificationCenter");
}

// The main queue is the only one there is.
void NSNotificationCenter::addObserverForName(std::string_view name, NSOperationQueue,
                                              std::function<void()> block) const {
  host::runtime::record(Event::Kind::kObserve, name);
  host::system::observers()[std::string(name)].push_back(std::move(block));
}

CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter() {
  return host::system::onlyObject<CFNotificationCenterRef>("CFNotificationCenter");
}

void CFNotificationCenterAddObserver(CFNotificationCenterRef center, void* observer,
                                     CFNotificationCallback callback, std::string_view name,
                                     const void* object) {
  host::runtime::record(Event::Kind::kObserve, name);
  host::system::keepForever(process().notifications().observe(
      name, [center, observer, callback, text = std::string(name), object] {
        callback(center, observer, text, object, PropertyListView());
      }));
}

}  // namespace platform
