#pragma once

#include <optional>
#include <string_view>

namespace prismal {

/// What the library does in a process, by the bundle identifier of its host.
enum class HostKind {
  kLeftAlone,    ///< no identifier, or one of a service that never shows a keyboard
  kSpringBoard,  ///< the home screen: its keyboard cache may be emptied once it has launched
  kOrdinary,
};

HostKind classifyHost(std::optional<std::string_view> bundleIdentifier);

}  // namespace prismal
