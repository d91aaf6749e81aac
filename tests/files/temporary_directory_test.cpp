#include "host/files/temporary_directory.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <system_error>

namespace host::files {
namespace {

namespace fs = std::filesystem;

/// Sets $TMPDIR as long as it lives.
class TemporaryVariable {
 public:
  explicit TemporaryVariable(const char* value) {
    if (const char* const before = std::getenv("TMPDIR")) before_ = before;
    ::setenv("TMPDIR", value, 1);
  }
  TemporaryVariable(const TemporaryVariable&) = delete;
  TemporaryVariable& operator=(const TemporaryVariable&) = delete;
  ~TemporaryVariable() {
    if (before_) {
      ::setenv("TMPDIR", before_->c_str(), 1);
    } else {
      ::unsetenv("TMPDIR");
    }
  }

 private:
  std::optional<std::string> before_;
};

TEST(TemporaryDirectory, IsOursAloneAndGoesWithItsContents) {
  fs::path path;
  {
    const TemporaryDirectory directory;
    const TemporaryDirectory other;
    path = directory.path();
    EXPECT_TRUE(path.is_absolute());
    EXPECT_NE(path, other.path());
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
    fs::create_directories(path / "a" / "b");
    std::ofstream(path / "a" / "b" / "file") << "x";
  }
  EXPECT_FALSE(fs::exists(path));
}

TEST(TemporaryDirectory, LiesWhereTheUserSays) {
  const TemporaryDirectory chosen;
  const TemporaryVariable set(chosen.path().c_str());
  EXPECT_EQ(TemporaryDirectory().path().parent_path(), chosen.path());
}

TEST(TemporaryDirectory, SaysWhereItCannotBe) {
  const TemporaryVariable set("/dev/null/none");
  try {
    const TemporaryDirectory directory;
    FAIL() << directory.path();
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::not_a_directory);
    EXPECT_NE(std::string(error.what()).find("/dev/null/none"), std::string::npos);
  }
}

}  // namespace
}  // namespace host::files
