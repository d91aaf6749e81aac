// Feeds files to a target without a fuzzing engine: those named, and all in the directories named.
// Ends like the target should one of them be a finding.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/target.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> filesAt(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(path)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

std::string contentsOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void feed(const fs::path& path) {
  // Before it runs: should it be a finding, it is the last one named.
  std::printf("%s\n", path.filename().c_str());
  std::fflush(stdout);
  const std::string bytes = contentsOf(path);
  // A copy of its very size, so that a sanitizer sees what is read behind it.
  const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

}  // namespace

int main(int count, char** arguments) {
  LLVMFuzzerInitialize(&count, &arguments);
  std::size_t fed = 0;
  for (int i = 1; i < count; ++i) {
    for (const fs::path& file : filesAt(arguments[i])) {
      feed(file);
      ++fed;
    }
  }
  std::printf("%zu inputs\n", fed);
  return fed == 0 ? 1 : 0;
}
