// A program of the device whose first key is asked for: the library reads the theme and builds its
// caches. Usage: read_theme DEVICE_ROOT LIBRARY [memory]
// With "memory": prints by how many KiB the process has grown since before the library was loaded.

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <utility>

#include "host/files/device_root.h"
#include "host/keyboard/keyboard.h"
#include "host/keyboard/tree.h"
#include "host/runtime/object.h"
#include "host/system/library_loader.h"
#include "host/system/process.h"
#include "platform/keyboard.h"

namespace {

using host::keyboard::TreeObject;

/// The colour that the theme of the measurement defines last.
constexpr std::string_view kLastColor = "Colour 9999 of the theme";

void askFirstKey() {
  const platform::NSAutoreleasePool pool;
  const auto key = host::runtime::makeRetained<platform::UIKBTree, TreeObject>();
  const auto keyplane = host::runtime::makeRetained<platform::UIKBTree, TreeObject>();
  host::keyboard::askTraits(host::keyboard::keyboard().factory.get(), key.get(), keyplane.get());
}

/// What of this process lies in memory.
long residentKiB() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) return std::stol(line.substr(6));
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  auto root = host::files::DeviceRoot::open(argv[1], host::files::DeviceRoot::Creation::kNever);
  if (!root) return 2;
  host::system::startProcess(*std::move(root), "com.example.notes");
  host::keyboard::defineKeyboardClasses({}, {});
  const bool tellsMemory = argc > 3;
  const long before = tellsMemory ? residentKiB() : 0;
  if (host::system::loadLibrary(argv[2])) return 1;
  askFirstKey();
  if (!platform::UIKBGetNamedColor(kLastColor)) {
    std::fputs("read_theme: the theme's colours are not there\n", stderr);
    return 1;
  }
  if (tellsMemory) std::printf("%ld\n", residentKiB() - before);
  return 0;
}
