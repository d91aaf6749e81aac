#pragma once

#include <string>
#include <vector>

#include "theme/dictionary_file.h"

namespace tools::theme {

/// Puts the settings file at `path` of this machine on a device, as the user's settings. As in a
/// theme, a relative path of a background picture is relative to the file's folder: those pictures
/// are copied to the device. The answer tells of pictures that are missing, a line each; the
/// failure's text names the file.
host::files::Result<std::vector<std::string>> putSettingsOn(const host::files::DeviceRoot& device,
                                                            const std::string& path);

}  // namespace tools::theme
