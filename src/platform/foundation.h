#pragma once

// What every program of the device has at hand: its bundle, the log, notifications, files, a shell.

#include <functional>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <variant>

#include "platform/object.h"
#include "platform/property_list.h"

namespace platform {

/// The bundle of the running program.
class PLATFORM_API NSBundle : public Object {
 public:
  using Object::Object;
  static NSBundle mainBundle();
  /// The text under `key` in the bundle's information dictionary.
  std::optional<std::string_view> infoDictionaryValueForKey(std::string_view key) const;
};

/// One argument of a log line. The text or list must live until NSLog returns.
class LogArgument {
 public:
  LogArgument(std::string_view text) : value_(text) {}  // NOLINT(*-explicit-*)
  LogArgument(std::optional<std::string_view> text) {   // NOLINT(*-explicit-*)
    if (text) value_ = *text;
  }
  LogArgument(PropertyListView value) : value_(value) {}  // NOLINT(*-explicit-*)
  LogArgument(int number) : value_(number) {}             // NOLINT(*-explicit-*)
  LogArgument(const void* address) : value_(address) {}   // NOLINT(*-explicit-*)

  using Value = std::variant<std::monostate, std::string_view, PropertyListView, int, const void*>;
  const Value& value() const { return value_; }

 private:
  Value value_;
};

/// Writes one line to the system log: `format` with each %@, %d and %p replaced by the next
/// argument. A text keeps one line (its control characters are escaped); null is "(null)".
PLATFORM_API void NSLog(std::string_view format, std::initializer_list<LogArgument> arguments = {});

/// A queue of work. The main one runs on the main thread, in the run loop.
class PLATFORM_API NSOperationQueue : public Object {
 public:
  using Object::Object;
  static NSOperationQueue mainQueue();
};

/// Announcements within the process.
class PLATFORM_API NSNotificationCenter : public Object {
 public:
  using Object::Object;
  static NSNotificationCenter defaultCenter();
  /// Runs `block` on `queue` each time anybody posts `name`, until the process ends.
  void addObserverForName(std::string_view name, NSOperationQueue queue,
                          std::function<void()> block) const;
};

/// Posted on the default centre once the application is up.
extern "C" PLATFORM_API const char* const UIApplicationDidFinishLaunchingNotification;

/// Announcements between processes: names without payload.
class PLATFORM_API CFNotificationCenterRef : public Object {
 public:
  using Object::Object;
};

using CFNotificationCallback = void (*)(CFNotificationCenterRef center, void* observer,
                                        std::string_view name, const void* object,
                                        PropertyListView userInfo);

PLATFORM_API CFNotificationCenterRef CFNotificationCenterGetDarwinNotifyCenter();
/// Calls `callback` from the main run loop after any process has posted `name`; posts that arrive
/// before the run loop comes round are one. Holds until the process ends.
PLATFORM_API void CFNotificationCenterAddObserver(CFNotificationCenterRef center, void* observer,
                                                  CFNotificationCallback callback,
                                                  std::string_view name, const void* object);

class PLATFORM_API NSFileManager : public Object {
 public:
  using Object::Object;
  static NSFileManager defaultManager();
  bool fileExistsAtPath(std::string_view path) const;
};

/// The bytes of a file.
class PLATFORM_API NSData : public Object {
 public:
  using Object::Object;
  /// Null when the file is missing or cannot be read whole.
  static NSData dataWithContentsOfFile(std::string_view path);
};

/// Runs `command` in a shell, waits for it and returns its wait status as the C library's function
/// of this name does. The paths in it are device paths; the program it names is the system's.
PLATFORM_API int system(std::string_view command);

}  // namespace platform
