#include "host/keyboard/cache.h"

#include <algorithm>
#include <utility>

#include "host/keyboard/text_object.h"
#include "host/keyboard/traits.h"
#include "host/runtime/class_table.h"
#include "host/runtime/hooking.h"
#include "host/runtime/trace.h"
#include "host/system/process.h"

namespace host::keyboard {

namespace {

using runtime::Event;

bool systemCacheEnabled(platform::Class, platform::SEL) {
  runtime::platformImplementationRuns("+[UIKeyboardCache enabled]");
  return true;
}

void noteKeyValueAccess(platform::Object object, std::string_view key) {
  if (runtime::as<CacheObject>(object)) {
    runtime::record(Event::Kind::kCache, std::string("valueForKey:").append(key));
  }
}

}  // namespace

CacheStoreObject::CacheStoreObject(std::vector<std::string> groupNames)
    : objc_object(runtime::defineClass("UIKBCacheStore")),
      groups(std::move(groupNames)),
      pictures(&system::process().root()) {}

std::vector<std::string> CacheStoreObject::allGroups() const {
  std::vector<std::string> names = groups;
  for (std::string& name : pictures.groups()) {
    if (std::ranges::find(groups, name) == groups.end()) names.push_back(std::move(name));
  }
  return names;
}

CacheObject::CacheObject() : objc_object(runtime::defineClass("UIKeyboardCache")) {
  store.set(
      runtime::makeRetained<platform::Object, CacheStoreObject>(std::vector<std::string>()).get());
}

void defineCacheClass() {
  objc_class* const cls = runtime::defineClass("UIKeyboardCache");
  runtime::addMethod(cls->isa, "enabled", reinterpret_cast<platform::IMP>(&systemCacheEnabled));
  runtime::addVariable(cls, {"_store", offsetOf(sharedCache(), &CacheObject::store)});
  runtime::setKeyValueObserver(&noteKeyValueAccess);
}

CacheObject& sharedCache() {
  static CacheObject& cache = *new CacheObject;
  return cache;
}

bool askCacheEnabled() {
  return runtime::send<bool>(platform::objc_getClass("UIKeyboardCache"),
                             platform::sel_registerName("enabled"));
}

KeyPictureStore* cachedPictures() {
  auto* const store = runtime::as<CacheStoreObject>(sharedCache().store.get());
  return store ? &store->pictures : nullptr;
}

}  // namespace host::keyboard

namespace platform {

using host::keyboard::CacheObject;
using host::keyboard::CacheStoreObject;
using host::runtime::as;
using host::runtime::Event;
using host::runtime::record;

UIKeyboardCache UIKeyboardCache::sharedInstance(Class receiver) {
  if (!receiver) return {};
  record(Event::Kind::kCache, "sharedInstance");
  return UIKeyboardCache(&host::keyboard::sharedCache());
}

void UIKeyboardCache::clearNonPersistentCache() const {
  const auto* const cache = as<CacheObject>(*this);
  if (!cache) return;
  record(Event::Kind::kCache, "clearNonPersistentCache");
  auto* const store = as<CacheStoreObject>(cache->store.get());
  if (store) store->pictures.clearMemory();
}

NSArray UIKBCacheStore::allGroups() const {
  const auto* const store = as<CacheStoreObject>(*this);
  if (!store) return {};
  record(Event::Kind::kCache, "allGroups");
  std::vector<Retained<Object>> names;
  for (const std::string& group : store->allGroups()) {
    names.push_back(host::runtime::makeRetained<Object, host::keyboard::TextObject>(group));
  }
  return NSArray(
      host::runtime::makeAutoreleased<host::keyboard::ArrayObject>(std::move(names), false));
}

void UIKBCacheStore::removeImagesInGroups(NSArray groups) const {
  auto* const store = as<CacheStoreObject>(*this);
  if (!store) return;
  record(Event::Kind::kCache, "removeImagesInGroups:");
  for (std::size_t i = 0; i < groups.count(); ++i) {
    const auto* const name = as<host::keyboard::TextObject>(groups.objectAtIndex(i));
    if (!name) continue;
    std::erase(store->groups, name->text);
    store->pictures.remove(name->text);
  }
}

void UIKBCacheStore::purge() const {
  auto* const store = as<CacheStoreObject>(*this);
  if (!store) return;
  record(Event::Kind::kCache, "purge");
  store->pictures.purge();
}

}  // namespace platform
