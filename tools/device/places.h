#pragma once

// Where things lie on a device, and what processes are told when they change.

#include <string_view>

namespace tools::device {

inline constexpr std::string_view kMergedTheme =
    "/var/mobile/Library/Preferences/net.quillon.prismal.mergedThemes.plist";
inline constexpr std::string_view kSettings =
    "/var/mobile/Library/Preferences/net.quillon.prismal.plist";
inline constexpr std::string_view kDefaultSettings =
    "/var/mobile/Library/Preferences/net.quillon.prismal.default.plist";
inline constexpr std::string_view kPreferences = "/var/mobile/Library/Preferences";

/// What only this program writes.
inline constexpr std::string_view kOwnFolder = "/var/mobile/Library/Prismal";
/// A folder a theme, by its name: its pictures, and the theme as its author wrote it.
inline constexpr std::string_view kThemes = "/var/mobile/Library/Prismal/Themes/";
/// The names of the themes that are installed, the lowest first.
inline constexpr std::string_view kOrder = "/var/mobile/Library/Prismal/installed.plist";
/// A folder a background that the user chose.
inline constexpr std::string_view kPictures = "/var/mobile/Library/Prismal/Pictures/";
/// What is on its way to its place, and what has had to leave it.
inline constexpr std::string_view kStaged = "/var/mobile/Library/Prismal/Staged/";

// Both are spelled so by everybody.
inline constexpr std::string_view kReloadThemes = "net.quillon.prismal.relaodThemes";
inline constexpr std::string_view kReloadSettings = "net.quillon.prismal.relaodSettings";

}  // namespace tools::device
