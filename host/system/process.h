#pragma once

#include <optional>
#include <string>

#include "host/files/darwin_notify.h"
#include "host/files/device_root.h"
#include "host/files/run_loop.h"

namespace host::system {

/// The one process that the host is: what it runs on and where it waits. Main thread only.
class Process {
 public:
  /// `bundleIdentifier`: none when the program has no bundle.
  Process(files::DeviceRoot root, std::optional<std::string> bundleIdentifier);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  const files::DeviceRoot& root() const { return root_; }
  files::RunLoop& runLoop() { return runLoop_; }
  files::NotificationWatcher& notifications() { return notifications_; }
  const std::optional<std::string>& bundleIdentifier() const { return bundleIdentifier_; }

 private:
  files::DeviceRoot root_;
  files::RunLoop runLoop_;
  files::NotificationWatcher notifications_;
  std::optional<std::string> bundleIdentifier_;
};

/// Makes this program a host process; once, before anything of the platform is used.
Process& startProcess(files::DeviceRoot root, std::optional<std::string> bundleIdentifier);

/// The process that was started.
Process& process();

}  // namespace host::system
