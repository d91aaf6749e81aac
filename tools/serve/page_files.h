#pragma once

#include <span>
#include <string_view>

namespace tools::serve {

/// A file of the page, as it lies in serve/page and is carried inside the program.
struct PageFile {
  std::string_view name;
  std::string_view bytes;
};

/// All of them. Defined in a source that the build makes.
std::span<const PageFile> pageFiles();

}  // namespace tools::serve
