#include "host/runtime/object.h"

#include <memory>

#include "host/runtime/class_table.h"

namespace platform {

void objc_retain(Object object) {
  if (object) ++object.get()->references;
}

void objc_release(Object object) {
  if (object && --object.get()->references == 0) delete object.get();
}

bool Object::isKindOfClass(Class cls) const {
  if (!object_ || !cls) return false;
  for (const objc_class* c = object_->isa; c; c = c->superclass) {
    if (c == cls.get()) return true;
  }
  return false;
}

bool Object::respondsToSelector(SEL selector) const {
  return object_ && host::runtime::implementation(object_->isa, selector);
}

Object Object::valueForKey(std::string_view key) const {
  if (!object_) return {};
  host::runtime::keyValueAccess(*this, key);
  const objc_ivar* const variable = host::runtime::findVariable(object_->isa, key);
  if (!variable || variable->kind != objc_ivar::Kind::kObject) return {};
  const auto* const address = reinterpret_cast<const std::byte*>(object_) + variable->offset;
  return Object(*reinterpret_cast<objc_object* const*>(address));
}

namespace {

using Pool = std::vector<Retained<Object>>;

std::vector<Pool>& pools() {
  static std::vector<Pool> stack;
  return stack;
}

}  // namespace

NSAutoreleasePool::NSAutoreleasePool() {
  pools().emplace_back();
}

NSAutoreleasePool::~NSAutoreleasePool() {
  // Taken off first: what a dying object lets go of belongs to the pool around this one.
  const Pool ending = std::move(pools().back());
  pools().pop_back();
}

}  // namespace platform

namespace host::runtime {

void autorelease(objc_object* object) {
  auto owned = platform::Retained<platform::Object>::adopt(platform::Object(object));
  if (!platform::pools().empty()) platform::pools().back().push_back(std::move(owned));
}

}  // namespace host::runtime
