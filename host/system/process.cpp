#include "host/system/process.h"

#include <cstdlib>
#include <utility>

namespace host::system {

namespace {

Process* started = nullptr;

}  // namespace

Process::Process(files::DeviceRoot root, std::optional<std::string> bundleIdentifier)
    : root_(std::move(root)),
      notifications_(root_, runLoop_),
      bundleIdentifier_(std::move(bundleIdentifier)) {}

Process& startProcess(files::DeviceRoot root, std::optional<std::string> bundleIdentifier) {
  // Never destroyed: the library keeps observers in it until the program ends.
  started = new Process(std::move(root), std::move(bundleIdentifier));
  return *started;
}

Process& process() {
  if (!started) std::abort();
  return *started;
}

}  // namespace host::system
