#pragma once

#include <string>

#include "host/files/descriptor.h"
#include "host/files/result.h"

namespace host::files {

/// Who resolves a path inside the root.
enum class Resolution {
  kKernel,  // openat2, in one step that nothing can interfere with
  kWalk,    // this process, a component at a time, where the kernel refuses openat2
};

/// The best way that this machine offers for the directory `root`.
Resolution bestResolution(int root);

/// Opens the existing `path` with the openat `flags` (close-on-exec is added; O_CREAT is not
/// supported) as if the directory `root` were `/`: neither `..` nor a symbolic link leads above it.
/// A relative path is taken from the root. Waits for nothing. Any thread.
Result<Descriptor> openInRoot(int root, const std::string& path, int flags, Resolution resolution);

/// Whether a person who reads the relative `path` from the directory `root` is led out of it, by an
/// absolute symbolic link or by `..`, be there something or not. No where the kernel refuses
/// openat2 and so can't tell. Any thread.
bool leadsOut(int root, const std::string& path);

}  // namespace host::files
