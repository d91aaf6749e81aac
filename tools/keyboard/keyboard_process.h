#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "host/files/device_root.h"
#include "host/files/result.h"
#include "host/files/temporary_directory.h"
#include "platform/foundation.h"

namespace tools::keyboard {

/// What a keyboard is dressed with.
struct Dress {
  /// A theme folder or file; empty: what is installed on the device.
  std::string theme;
  /// The plain keyboard, the library not loaded.
  bool system = false;
  /// The device; none: the default one, or a private one for a theme or the plain keyboard.
  std::optional<std::filesystem::path> device_root;
  /// A settings file for the private device of a theme; empty: no settings.
  std::string settings;
  std::filesystem::path library;
  /// Before it reads the theme, the process gives up other files, the network and programs
  /// (keyboard/confinement.h), for good.
  bool sandboxed = false;
  /// An empty directory for the device that goes with the process, when somebody else makes it and
  /// clears it away: a sandboxed process can only empty its own.
  std::optional<std::filesystem::path> private_device = {};
  /// Neither what the library logs nor which pictures are missing is told on standard error.
  bool quiet = false;
  /// Neither are the lines that the library logs whatever the theme is.
  bool faultsOnly = false;
  /// What goes before each of these lines, when another process tells some of its own.
  std::string told_as;
};

/// Whether a keyboard in this dress has a device of its own, which goes with it.
bool hasPrivateDevice(const Dress& dress);

/// Makes this program a process with a keyboard in it, dressed as it was asked for: once a process,
/// since the library can be loaded but not taken out again. The device that was made for a theme
/// goes with this object. Main thread only.
class KeyboardProcess {
 public:
  /// The failure's text is one line that names the file and the reason.
  static host::files::Result<KeyboardProcess> start(const Dress& dress, double scale);

 private:
  explicit KeyboardProcess(std::optional<host::files::TemporaryDirectory> device)
      : device_(std::move(device)) {}

  std::optional<host::files::TemporaryDirectory> device_;
};

}  // namespace tools::keyboard
