#pragma once

// Notifications between the processes that share a device root. There is no daemon: each name has a
// file under /var/run/notify, posting touches it, and whoever observes watches that directory.

#include <functional>
#include <memory>
#include <string_view>

#include "host/files/device_root.h"
#include "host/files/run_loop.h"

namespace host::files {

inline constexpr std::string_view kNotificationDirectory = "/var/run/notify";

/// Tells every process that observes `name`, this one included. False when the name can't be a file
/// name (empty, too long) or the directory can't be written. Any thread.
bool postNotification(const DeviceRoot& root, std::string_view name);

/// Observes notifications from a process's main run loop. Several posts of one name that come
/// before the run loop comes round are delivered as one; a post from before the observation began
/// is not delivered. Names come in the order in which they were first posted (in that in which they
/// were last posted, when the run loop has not come round before), the observers of a name in the
/// order in which they registered. Both arguments of the constructor must outlive it.
/// Run loop's thread only.
class NotificationWatcher {
 public:
  struct Observer;
  /// Observes for as long as it is kept; null when the observation was refused. May outlive the
  /// watcher.
  using Token = std::shared_ptr<const Observer>;

  /// Watches nothing until something is observed.
  NotificationWatcher(const DeviceRoot& root, RunLoop& run_loop);
  NotificationWatcher(const NotificationWatcher&) = delete;
  NotificationWatcher& operator=(const NotificationWatcher&) = delete;
  ~NotificationWatcher();

  /// Calls `callback` on the run loop for every delivery of `name` from here on. It may observe and
  /// post, and let go of any token. Where the directory can't be used yet, it waits until it can.
  /// Null when the name can't be a file name, or when the run loop has come round before and
  /// nothing can be watched.
  [[nodiscard]] Token observe(std::string_view name, std::function<void()> callback);

 private:
  class Watch;
  std::shared_ptr<Watch> watch_;
};

}  // namespace host::files
