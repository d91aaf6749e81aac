#pragma once

#include <cstddef>
#include <string>

#include "host/runtime/object.h"

namespace host::system {

/// How long a file may be whose bytes are asked for.
inline constexpr std::size_t kMaxDataBytes = std::size_t{64} << 20U;

/// The bytes behind an NSData, and the device path that they came from.
struct DataObject final : objc_object {
  DataObject(std::string fileBytes, std::string filePath);
  std::string bytes;
  std::string path;
};

}  // namespace host::system
