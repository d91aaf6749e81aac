#pragma once

#include "host/files/descriptor.h"
#include "host/files/device_root.h"
#include "host/files/result.h"

namespace tools::device {

/// A change of a device, which one process makes at a time. With it goes what it has staged below
/// kStaged, and what no list names when it ends. The device must outlive it.
class Change {
 public:
  /// Waits until no other process changes the device, says so on standard error when that takes
  /// longer than a moment, finishes what killed ones have begun and clears away what they have
  /// left. Fails with EINTR when a signal that HeldInterruptions notes ends the wait.
  static host::files::Result<Change> begin(const host::files::DeviceRoot& device);

  Change(Change&&) = default;
  Change& operator=(Change&&) = delete;
  ~Change();

 private:
  Change(const host::files::DeviceRoot& device, host::files::Descriptor lock)
      : device_(device), lock_(std::move(lock)) {}

  const host::files::DeviceRoot& device_;
  host::files::Descriptor lock_;
};

}  // namespace tools::device
