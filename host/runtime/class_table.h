#pragma once

#include <functional>
#include <string_view>

#include "host/runtime/object.h"
#include "host/runtime/trace.h"

// The host's classes by name, their methods and instance variables. Main thread only.

namespace host::runtime {

/// The class of that name; made, with a metaclass of its own, when there is none yet. `superclass`
/// null makes a root class. Lives until the process ends.
objc_class* defineClass(std::string_view name, objc_class* superclass = nullptr);

/// A class that `objc_getClass` never finds, as the effects of a scenario have.
objc_class* makeAnonymousClass(std::string_view name, objc_class* superclass);

/// From now on the host lacks the class: nobody finds it by its name. The host itself may still
/// make objects of it.
void hideClass(std::string_view name);

/// Whether the host has a class of that name and does not hide it.
bool hasClass(std::string_view name);

void addMethod(objc_class* cls, std::string_view selector, platform::IMP implementation);
void addVariable(objc_class* cls, objc_ivar variable);
void removeVariable(objc_class* cls, std::string_view name);

/// The code that a message to an object of `cls` runs; null when it has no such method.
platform::IMP implementation(const objc_class* cls, platform::SEL selector);

/// Sends a message: runs whatever stands in the receiver's method table. A null receiver, or one
/// without the method, answers a value-initialised Result. The argument types must be those of the
/// method, to the letter.
template <class Result, class Receiver, class... Arguments>
Result send(Receiver receiver, platform::SEL selector, Arguments... arguments) {
  if (!receiver) return Result();
  const platform::IMP code = implementation(receiver.get()->isa, selector);
  if (!code) return Result();
  using Method = Result (*)(Receiver, platform::SEL, Arguments...);
  return reinterpret_cast<Method>(code)(receiver, selector, arguments...);
}

/// Told of every key-value access before it is answered, while events are recorded.
void setKeyValueObserver(std::function<void(platform::Object, std::string_view)> observer);
void tellKeyValueObserver(platform::Object object, std::string_view key);
inline void keyValueAccess(platform::Object object, std::string_view key) {
  if (recording()) tellKeyValueObserver(object, key);
}

/// The variable of that name in `cls`, which may be null, or a class it derives from; or null.
const objc_ivar* findVariable(const objc_class* cls, std::string_view name);

/// How people write a method: "-[Class selector]", of a metaclass "+[Class selector]".
std::string methodName(const objc_class* cls, platform::SEL selector);

}  // namespace host::runtime
