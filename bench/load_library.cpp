// Times how long a host's process takes to load the library, and to load an empty one.
// Usage: load_library DEVICE_ROOT LIBRARY EMPTY_LIBRARY BUNDLE_IDENTIFIER [empty-first]
// Prints two numbers of nanoseconds. The home screen's process puts the purge of the keyboard's
// cache off until it is up; in every other one it is a part of loading.

#include <chrono>
#include <cstdio>
#include <dlfcn.h>
#include <utility>

#include "host/files/device_root.h"
#include "host/keyboard/keyboard.h"
#include "host/system/process.h"

namespace {

long long load(const char* library) {
  const auto start = std::chrono::steady_clock::now();
  void* const loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
  const auto took = std::chrono::steady_clock::now() - start;
  if (!loaded) {
    std::fprintf(stderr, "%s\n", dlerror());
    return -1;
  }
  return std::chrono::nanoseconds(took).count();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) return 2;
  auto root = host::files::DeviceRoot::open(argv[1], host::files::DeviceRoot::Creation::kNever);
  if (!root) return 2;
  host::system::startProcess(*std::move(root), argv[4]);
  host::keyboard::defineKeyboardClasses({}, {});
  const bool emptyFirst = argc > 5;
  const long long first = load(argv[emptyFirst ? 3 : 2]);
  const long long second = load(argv[emptyFirst ? 2 : 3]);
  std::printf("%lld %lld\n", emptyFirst ? second : first, emptyFirst ? first : second);
  return first < 0 || second < 0 ? 1 : 0;
}
