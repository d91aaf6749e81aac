#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "platform/object.h"
#include "platform/runtime.h"

/// A method's name, one object a name.
struct objc_selector {
  std::string name;
};

/// An instance variable: where it lies in every object of its class.
struct objc_ivar {
  enum class Kind : std::uint8_t { kObject, kInt32 };
  std::string name;
  std::ptrdiff_t offset = 0;
  Kind kind = Kind::kObject;
};

struct objc_class;

/// What every object of the host begins with. Counted references; the maker owns the first.
struct objc_object {
  explicit objc_object(objc_class* cls) : isa(cls) {}
  virtual ~objc_object() = default;
  objc_object(const objc_object&) = delete;
  objc_object& operator=(const objc_object&) = delete;

  objc_class* isa;
  std::uint32_t references = 1;
};

/// A class, or the metaclass that holds the class methods of one.
struct objc_class final : objc_object {
  objc_class(std::string className, objc_class* parent, objc_class* metaclass)
      : objc_object(metaclass), name(std::move(className)), superclass(parent) {}

  bool isMetaclass() const { return isa == nullptr; }

  struct Method {
    platform::SEL selector;
    platform::IMP implementation;
  };

  std::string name;
  objc_class* superclass;
  std::vector<Method> methods;
  std::vector<objc_ivar> variables;
};

namespace host::runtime {

/// The host's own object behind a handle, or null when the handle is null or of another kind.
template <class T>
T* as(platform::Object handle) {
  objc_object* const object = handle.get();
  if (!object) return nullptr;
  // The exact type is by far the most frequent answer, and cheaper than a cast through a hierarchy.
  if (typeid(*object) == typeid(T)) return static_cast<T*>(object);
  if constexpr (std::is_final_v<T>) return nullptr;
  return dynamic_cast<T*>(object);
}

/// Hands an object that the caller owns to the innermost autorelease pool.
void autorelease(objc_object* object);

/// Makes an object that lives until the innermost autorelease pool ends.
template <class T, class... Arguments>
T* makeAutoreleased(Arguments&&... arguments) {
  T* const object = new T(std::forward<Arguments>(arguments)...);
  autorelease(object);
  return object;
}

/// Makes an object that the result keeps.
template <class Handle, class T, class... Arguments>
platform::Retained<Handle> makeRetained(Arguments&&... arguments) {
  return platform::Retained<Handle>::adopt(Handle(new T(std::forward<Arguments>(arguments)...)));
}

}  // namespace host::runtime
