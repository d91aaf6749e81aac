#include "device/change.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <new>
#include <string>
#include <sys/file.h>
#include <thread>

#include "device/leftovers.h"
#include "device/places.h"
#include "device/report.h"
#include "device/theme_store.h"
#include "held_interruptions.h"
#include "host/files/darwin_notify.h"

namespace tools::device {

using host::files::Descriptor;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;

namespace {

constexpr std::chrono::milliseconds kAMoment{500};
constexpr std::chrono::milliseconds kBetweenTries{10};

Result<Descriptor> openLock(const DeviceRoot& device) {
  if (const auto made = device.makeDirectories(kOwnFolder); !made) return made.failure();
  const auto folder = device.openDirectory(kOwnFolder);
  if (!folder) return folder.failure();
  constexpr int kFlags = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  Descriptor lock(::openat(folder->get(), ".lock", kFlags, 0644));
  if (!lock) return host::files::lastFailure();
  return lock;
}

// Asks again and again: a wait in the kernel would miss a signal that came just before it.
Result<Done> wait(const Descriptor& lock) {
  for (auto waited = kBetweenTries;; waited += kBetweenTries) {
    if (::flock(lock.get(), LOCK_EX | LOCK_NB) == 0) return Done();
    if (errno != EWOULDBLOCK && errno != EINTR) return host::files::lastFailure();
    if (HeldInterruptions::came()) return Failure(EINTR, "interrupted; nothing has changed");
    if (waited == kAMoment)
      std::fputs("waiting for another program that changes the device\n", stderr);
    std::this_thread::sleep_for(kBetweenTries);
  }
}

/// Where a process was killed between the list of themes and the merged file, the one says what the
/// other has to be. Nothing to refuse a change for: it makes that file anew itself if it can.
void finishThemes(const DeviceRoot& device) {
  const auto store = ThemeStore::read(device);
  const auto finished = store ? store->finish() : Result<bool>(false);
  if (!finished || !*finished) return;
  tell({std::string(kMergedTheme) + ": was not what the installed themes make; it is made anew"});
  static_cast<void>(host::files::postNotification(device, kReloadThemes));
}

}  // namespace

Result<Change> Change::begin(const DeviceRoot& device) {
  auto lock = openLock(device);
  if (!lock) {
    return Failure(lock.failure().error, std::string(kOwnFolder) + ": " + lock.reason());
  }
  if (const auto waited = wait(*lock); !waited) return waited.failure();
  finishThemes(device);
  if (const auto cleared = clearLeftovers(device); !cleared) return cleared.failure();
  return Change(device, *std::move(lock));
}

Change::~Change() {
  if (!lock_) return;
  try {
    static_cast<void>(clearLeftovers(device_));
  } catch (const std::bad_alloc&) {
    // What stays is cleared by the next change.
  }
}

}  // namespace tools::device
