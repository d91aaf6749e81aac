#include "hooks/process_filter.h"

#include <algorithm>
#include <array>

#include "support/characters.h"

namespace prismal {

namespace {

constexpr std::array<std::string_view, 22> excludedBundleIdentifiers = {
    "com.apple.syncdefaultsd",
    "com.apple.calaccessd",
    "com.apple.AssistantServices",
    "com.apple.sharingd",
    "com.apple.aosnotifyd",
    "com.apple.assetsd",
    "com.apple.dataaccess.dataaccessd",
    "com.apple.SystemConfiguration",
    "commcentermobilehelper",
    "com.apple.backupd",
    "com.apple.timed",
    "com.apple.atc",
    "com.apple.imagent",
    "com.apple.mediaserverd",
    "com.apple.iapd",
    "com.apple.itunesstored",
    "com.apple.MobileStorageMounter",
    "com.apple.USBDeviceArbitrator",
    "com.apple.aps.framework",
    "com.apple.coreservices.appleid.agent",
    "com.apple.mediastream.mstreamd",
    "com.apple.managedconfiguration.profiled",
};

}  // namespace

HostKind classifyHost(std::optional<std::string_view> bundleIdentifier) {
  if (!bundleIdentifier) return HostKind::kLeftAlone;
  if (std::ranges::find(excludedBundleIdentifiers, *bundleIdentifier) !=
      excludedBundleIdentifiers.end()) {
    return HostKind::kLeftAlone;
  }
  // In any letter case, unlike the list above.
  if (std::ranges::equal(*bundleIdentifier, std::string_view("com.apple.springboard"), {},
                         lowerCase)) {
    return HostKind::kSpringBoard;
  }
  return HostKind::kOrdinary;
}

}  // namespace prismal
