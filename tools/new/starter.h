#pragma once

#include <string>
#include <vector>

namespace tools::starter {

/// A file of the theme that authors begin with.
struct File {
  std::string name;
  std::string bytes;
};

/// All of its files: theme.plist, commented, and its background pictures, each at both
/// sizes.
std::vector<File> files();

}  // namespace tools::starter
