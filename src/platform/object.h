#pragma once

// The platform layer: the operations of the device that the library needs, under the names they
// have there. It declares and does not define; whoever loads the library (a device, the desktop
// host) binds every symbol at load time. These conventions hold in every header of this folder:
//
//  1. A handle is a value type around one pointer, possibly null. A null handle answers zero, none
//     or a null handle; telling it something does nothing. So does an object that is told something
//     which its class does not understand.
//  2. Handles look, they do not own: the object lives while its owner does. An object made for the
//     caller lives until the innermost NSAutoreleasePool ends. Retained<Handle> keeps an object
//     alive; an operation that returns one hands its object over to the caller.
//  3. Text is UTF-8 in a std::string_view that is valid while the object it came from is unchanged;
//     std::optional where the device may answer null.
//  4. Lengths are points unless a name says pixels; the origin is top left and y grows down.
//  5. Paths are device paths: absolute, and never a path of the machine that the host runs on.
//  6. Everything is for the main thread only. Nothing throws but std::bad_alloc.

#include <string_view>
#include <utility>

#define PLATFORM_API __attribute__((visibility("default")))

struct objc_object;

namespace platform {

class Class;
class SEL;

/// Any object of the platform.
class PLATFORM_API Object {
 public:
  constexpr Object() = default;
  constexpr explicit Object(objc_object* object) : object_(object) {}

  constexpr explicit operator bool() const { return object_ != nullptr; }
  constexpr objc_object* get() const { return object_; }
  friend constexpr bool operator==(Object, Object) = default;

  /// Whether the object's class is `cls` or derives from it; false for a null class.
  bool isKindOfClass(Class cls) const;
  bool respondsToSelector(SEL selector) const;
  /// The object that the instance variable named `key` holds; null when there is none.
  Object valueForKey(std::string_view key) const;

 private:
  objc_object* object_ = nullptr;
};

PLATFORM_API void objc_retain(Object object);
PLATFORM_API void objc_release(Object object);

/// Keeps one reference to an object for as long as it lives.
template <class Handle>
class Retained {
 public:
  constexpr Retained() = default;
  /// Adds a reference of its own.
  explicit Retained(Handle handle) : handle_(handle) { objc_retain(handle_); }
  /// Takes over a reference that the caller owns.
  static Retained adopt(Handle handle) {
    Retained retained;
    retained.handle_ = handle;
    return retained;
  }

  Retained(const Retained& other) : Retained(other.handle_) {}
  Retained(Retained&& other) noexcept : handle_(std::exchange(other.handle_, Handle())) {}
  Retained& operator=(Retained other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Retained() { objc_release(handle_); }

  explicit operator bool() const { return static_cast<bool>(handle_); }
  Handle get() const { return handle_; }
  const Handle* operator->() const { return &handle_; }

 private:
  Handle handle_;
};

/// Objects made for a caller while this is the innermost pool are let go when it ends.
class PLATFORM_API NSAutoreleasePool {
 public:
  NSAutoreleasePool();
  ~NSAutoreleasePool();
  NSAutoreleasePool(const NSAutoreleasePool&) = delete;
  NSAutoreleasePool& operator=(const NSAutoreleasePool&) = delete;
};

}  // namespace platform
