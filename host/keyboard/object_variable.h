#pragma once

#include <utility>

#include "host/runtime/object.h"

namespace host::keyboard {

/// An instance variable that holds an object and keeps it. Key-value access reads the pointer at
/// the variable's address, so there is nothing before it.
class ObjectVariable {
 public:
  ObjectVariable() = default;
  ObjectVariable(const ObjectVariable&) = delete;
  ObjectVariable& operator=(const ObjectVariable&) = delete;
  ~ObjectVariable() { set({}); }

  void set(platform::Object object) {
    platform::objc_retain(object);
    platform::objc_release(platform::Object(std::exchange(object_, object.get())));
  }
  platform::Object get() const { return platform::Object(object_); }

 private:
  objc_object* object_ = nullptr;
};

/// Where `member` lies in an object of type T, from the address that handles hold.
template <class T, class Member>
std::ptrdiff_t offsetOf(const T& object, const Member T::*member) {
  const auto* const start =
      reinterpret_cast<const std::byte*>(static_cast<const objc_object*>(&object));
  return reinterpret_cast<const std::byte*>(&(object.*member)) - start;
}

}  // namespace host::keyboard
