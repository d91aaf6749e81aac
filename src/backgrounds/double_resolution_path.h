#pragma once

#include <string>
#include <string_view>

namespace prismal {

/// A path taken apart the way the platform does it.
struct PathParts {
  std::string_view directory;
  std::string_view base;
  std::string_view extension;
};

constexpr std::string_view withoutTrailingSlashes(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  return path;
}

constexpr PathParts takeApart(std::string_view path) {
  path = withoutTrailingSlashes(path);
  PathParts parts{.directory = {}, .base = path, .extension = {}};
  if (const auto slash = path.rfind('/'); slash != std::string_view::npos) {
    parts.directory = withoutTrailingSlashes(path.substr(0, slash + 1));
    parts.base = path.substr(slash + 1);
  }
  // A point at the very start makes a hidden file, not an extension.
  if (const auto point = parts.base.rfind('.'); point != std::string_view::npos && point > 0) {
    parts.extension = parts.base.substr(point + 1);
    parts.base = parts.base.substr(0, point);
  }
  return parts;
}

/// Where the double-resolution sibling of the picture at `path` lies: "@2x" before the extension.
/// /t/bg.png gives /t/bg@2x.png; without an extension a point is left over, /t/bg@2x.
inline std::string doubleResolutionPath(std::string_view path) {
  const PathParts parts = takeApart(path);
  std::string sibling(parts.directory);
  if (!sibling.empty() && !sibling.ends_with('/')) sibling += '/';
  sibling.append(parts.base).append("@2x.").append(parts.extension);
  return sibling;
}

}  // namespace prismal
