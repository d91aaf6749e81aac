#include "keyboard/keyboard_child.h"

#include <cerrno>
#include <utility>

namespace tools::keyboard {

using host::files::Failure;
using host::files::Result;
using host::files::TemporaryDirectory;

Result<KeyboardChild> KeyboardChild::start(Dress dress, const Work& work) {
  std::optional<TemporaryDirectory> device;
  if (hasPrivateDevice(dress)) dress.private_device = device.emplace().path();
  auto process = ChildProcess::start([&] { return work(dress); });
  if (!process) return process.failure();
  return KeyboardChild(std::move(device), *std::move(process));
}

Result<std::string> KeyboardChild::bytes() {
  auto bytes = process_.bytes();
  // It needs no device any more, and takes longer to end than the device to go.
  if (bytes) device_.reset();
  if (bytes || bytes.failure().error != ECHILD) return bytes;
  return Failure(ECHILD, "the process that shows the keyboard died");
}

}  // namespace tools::keyboard
