#pragma once

// A host with the library in it that shows a keyboard of a sample device, from its start.

#include <cstddef>
#include <string>
#include <vector>

#include "host/drawing/fonts.h"
#include "host/images/bitmap.h"

namespace tests {

// What the sample device has, in device paths.
inline constexpr const char* kTheme =
    "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist";
inline constexpr const char* kSettings =
    "/var/mobile/Library/Preferences/net.quillon.prismal.plist";
inline constexpr const char* kDefaultSettings =
    "/var/mobile/Library/Preferences/net.quillon.prismal.default.plist";
inline constexpr const char* kPicture = "/pictures/p.png";
inline constexpr const char* kSibling = "/pictures/p@2x.png";
inline constexpr const char* kPhotograph = "/pictures/l.jpg";
inline constexpr const char* kCachedKeys =
    "/var/mobile/Library/Caches/com.apple.keyboards/Old@2x.keys";

/// Puts all of it on the device at the machine's directory `device`.
void makeDevice(const std::string& device);

/// The process with its keyboard. Once a process.
class HostSession {
 public:
  /// Starts the host; throws when it can't.
  explicit HostSession(const std::string& device);
  /// Loads the library; false when it can't be.
  bool loadLibrary();
  /// Two keyboards, upright and lying, as they are drawn; empty bitmaps for what can't be.
  std::vector<host::images::Bitmap> draw();

 private:
  host::drawing::Fonts fonts_;
};

/// A number that is another one for other pixels.
std::size_t hashOf(const std::vector<host::images::Bitmap>& pictures);

}  // namespace tests
