// A host that loads the library and says how that went.
// Usage: probe_host DEVICE_ROOT LIBRARY

#include <cstdio>
#include <filesystem>

#include "host/files/device_root.h"
#include "host/keyboard/keyboard.h"
#include "host/system/library_loader.h"
#include "host/system/process.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  auto root = host::files::DeviceRoot::open(argv[1], host::files::DeviceRoot::Creation::kNever);
  if (!root) return 2;
  host::system::startProcess(*std::move(root), "com.example.notes");
  host::keyboard::defineKeyboardClasses({}, {});
  const auto failure = host::system::loadLibrary(argv[2]);
  std::printf("%s\n", failure ? failure->c_str() : "loaded");
  return failure ? 1 : 0;
}
