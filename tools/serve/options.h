#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "device/open_device.h"

namespace tools::serve {

/// What `prismal serve` was asked for.
struct Options {
  static constexpr std::uint16_t kUsualPort = 8320;

  std::string theme;
  std::string other;                ///< a theme to compare with; empty: none
  device::Place device;             ///< whose user's settings the keyboard begins with
  std::uint16_t port = kUsualPort;  ///< 0: any that is free
  bool opens = false;
  std::filesystem::path library;
  bool isLibraryNamed = false;  ///< by the user: it isn't the one that belongs to this program
  bool sandbox = true;  ///< whether processes that read a theme give up what they don't need
};

}  // namespace tools::serve
