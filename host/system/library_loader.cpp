#include "host/system/library_loader.h"

#include <dlfcn.h>
#include <string_view>

#include "host/runtime/class_table.h"

namespace host::system {

namespace {

/// The class symbols that a library may be linked against. This program always has the symbols; a
/// host that is told to lack such a class refuses in the dynamic linker's stead, in its words.
constexpr std::string_view kLinkedClasses[] = {"UIKeyboardImpl"};

}  // namespace

std::optional<std::string> loadLibrary(const std::filesystem::path& library) {
  for (const std::string_view name : kLinkedClasses) {
    if (!runtime::hasClass(name)) {
      return library.string() + ": undefined symbol: OBJC_CLASS_" + std::string(name);
    }
  }
  void* const loaded = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (loaded && dlsym(loaded, "PMLibraryLoad")) return std::nullopt;
  if (loaded) return library.string() + ": loaded, but it is another library: no PMLibraryLoad";
  const char* const reason = dlerror();
  return reason ? std::string(reason) : library.string() + ": cannot be loaded";
}

}  // namespace host::system
