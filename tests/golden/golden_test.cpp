// Pictures that must not change by themselves: each drawn anew and compared with the one that was
// looked at and kept. A picture that does differ is written, with what differs, to where the test
// runs.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

#include "host/files/temporary_directory.h"
#include "host/images/bitmap.h"
#include "host/images/decode.h"
#include "host/images/encode.h"

namespace {

namespace fs = std::filesystem;
using host::images::Bitmap;
using host::images::Pixel;

struct Golden {
  std::string name;
  std::string arguments;
};

void PrintTo(const Golden& golden, std::ostream* out) {
  *out << golden.name;
}

std::vector<Golden> goldens() {
  std::vector<Golden> all;
  std::ifstream list(GOLDEN_FOLDER "/pictures.txt");
  for (std::string line; std::getline(list, line);) {
    if (line.empty() || line.starts_with('#')) continue;
    Golden golden;
    std::istringstream words(line);
    words >> golden.name;
    for (std::string word; words >> word;) {
      golden.arguments += word == "GOLDEN" ? " '" GOLDEN_FOLDER "/Golden.theme'" : " " + word;
    }
    all.push_back(golden);
  }
  return all;
}

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Bitmap pictureAt(const fs::path& path) {
  const auto decoded = host::images::decode(bytesOf(path));
  EXPECT_TRUE(decoded) << path << ": " << decoded.reason;
  return decoded ? *decoded.bitmap : Bitmap();
}

/// Other versions of the libraries that draw may round otherwise; nobody sees so little.
bool isClose(Pixel one, Pixel other) {
  constexpr int kTolerance = 3;
  for (const int shift : {0, 8, 16, 24}) {
    const int difference =
        static_cast<int>(one >> shift & 0xff) - static_cast<int>(other >> shift & 0xff);
    if (std::abs(difference) > kTolerance) return false;
  }
  return true;
}

/// White where the two are close, else black; none when they are close everywhere.
std::optional<Bitmap> difference(const Bitmap& one, const Bitmap& other) {
  Bitmap marked = host::images::solid(one.width, one.height, 255, 255, 255, 255);
  const auto mark = [](Pixel a, Pixel b) { return isClose(a, b) ? 0xffffffff : 0xff000000; };
  std::ranges::transform(one.pixels, other.pixels, marked.pixels.begin(), mark);
  if (std::ranges::count(marked.pixels, 0xff000000) == 0) return std::nullopt;
  return marked;
}

class GoldenPicture : public testing::TestWithParam<Golden> {};

TEST_P(GoldenPicture, IsDrawnAsEver) {
  const Golden& golden = GetParam();
  const host::files::TemporaryDirectory folder;
  const fs::path drawn = folder.path() / "drawn.png";
  const std::string command =
      "'" PRISMAL "' render --quiet" + golden.arguments + " -o '" + drawn.string() + "'";
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
  const Bitmap expected = pictureAt(GOLDEN_FOLDER "/" + golden.name + ".png");
  const Bitmap actual = pictureAt(drawn);
  const fs::path kept = golden.name + "-actual.png";
  if (actual.width != expected.width || actual.height != expected.height) {
    fs::copy_file(drawn, kept, fs::copy_options::overwrite_existing);
    FAIL() << "another size; see " << fs::absolute(kept);
  }
  const auto marked = difference(expected, actual);
  if (!marked) return;
  fs::copy_file(drawn, kept, fs::copy_options::overwrite_existing);
  const fs::path differing = golden.name + "-difference.png";
  std::ofstream(differing, std::ios::binary) << host::images::encodePng(*marked);
  FAIL() << "see " << fs::absolute(kept) << " and " << fs::absolute(differing);
}

INSTANTIATE_TEST_SUITE_P(All, GoldenPicture, testing::ValuesIn(goldens()), [](const auto& tested) {
  std::string name = tested.param.name;
  std::ranges::replace(name, '-', '_');
  return name;
});

TEST(GoldenPictures, AreNamedEach) {
  const auto all = goldens();
  EXPECT_GE(all.size(), 8U);
  for (const auto& file : fs::directory_iterator(GOLDEN_FOLDER)) {
    if (file.path().extension() != ".png") continue;
    EXPECT_EQ(std::ranges::count(all, file.path().stem().string(), &Golden::name), 1)
        << file.path() << " is no test's";
  }
}

}  // namespace
