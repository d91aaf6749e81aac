#pragma once

#include <string>

#include "host/runtime/object.h"

namespace host::system {

/// The bytes behind an NSData, and the device path that they came from.
struct DataObject final : objc_object {
  DataObject(std::string fileBytes, std::string filePath);
  std::string bytes;
  std::string path;
};

}  // namespace host::system
