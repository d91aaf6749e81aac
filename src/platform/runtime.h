#pragma once

// The object runtime: classes, selectors, instance variables, and the hooking engine.

#include <cstddef>
#include <string_view>

#include "platform/object.h"

struct objc_ivar;
struct objc_selector;

namespace platform {

class PLATFORM_API Class : public Object {
 public:
  using Object::Object;
};

/// The name of a method. Two selectors of one name are equal.
class PLATFORM_API SEL {
 public:
  constexpr SEL() = default;
  constexpr explicit SEL(const objc_selector* selector) : selector_(selector) {}
  constexpr const objc_selector* get() const { return selector_; }
  friend constexpr bool operator==(SEL, SEL) = default;

 private:
  const objc_selector* selector_ = nullptr;
};

/// A named variable that every object of a class holds.
class PLATFORM_API Ivar {
 public:
  constexpr Ivar() = default;
  constexpr explicit Ivar(const objc_ivar* variable) : variable_(variable) {}
  constexpr explicit operator bool() const { return variable_ != nullptr; }
  constexpr const objc_ivar* get() const { return variable_; }

 private:
  const objc_ivar* variable_ = nullptr;
};

/// The code of a method or function, to be cast to the type it has before it is called. A method
/// takes the receiver's handle and its selector before its arguments.
using IMP = void (*)();

/// The class of that name, or null.
PLATFORM_API Class objc_getClass(std::string_view name);
/// The class of an object; of a class, its metaclass, which holds the class methods.
PLATFORM_API Class object_getClass(Object object);
PLATFORM_API SEL sel_registerName(std::string_view name);
/// The variable of that name in `cls` or a class it derives from, or null.
PLATFORM_API Ivar class_getInstanceVariable(Class cls, std::string_view name);
/// Where the variable lies, in bytes from the address that the object's handle holds.
PLATFORM_API std::ptrdiff_t ivar_getOffset(Ivar variable);

/// Replaces the C function `symbol` in this process and stores what was there in `*previous`.
PLATFORM_API void MSHookFunction(IMP symbol, IMP replacement, IMP* previous);
/// Replaces the method of `cls` (of a metaclass: the class method) and stores what was there in
/// `*previous`.
PLATFORM_API void MSHookMessageEx(Class cls, SEL selector, IMP replacement, IMP* previous);

}  // namespace platform
