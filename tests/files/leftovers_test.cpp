#include "host/files/leftovers.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "host/files/temporary_directory.h"

namespace host::files {
namespace {

namespace fs = std::filesystem;

class Leftovers : public testing::Test {
 protected:
  fs::path at(const std::string& name) const { return directory_.path() / name; }
  void write(const std::string& name) const {
    fs::create_directories(at(name).parent_path());
    std::ofstream(at(name)) << "x";
  }

  /// In a process of its own, for what this one has noted must stay.
  static void inAnother(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
      work();
      _exit(0);
    }
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }

 private:
  TemporaryDirectory directory_;
};

TEST_F(Leftovers, GoWithAllThatLiesInThem) {
  write("outside/kept");
  write("file");
  write("tree/file");
  write("tree/a/b/c/file");
  write("tree/a/d/file");
  fs::create_directories(at("tree/empty"));
  fs::create_directory_symlink(at("outside"), at("tree/a/link"));
  fs::create_directory_symlink(at("outside"), at("link"));
  for (int i = 0; i < 500; ++i)
    write("tree/many/a rather long name of a file " + std::to_string(i));
  std::string deep = "tree";
  for (int i = 0; i < 900; ++i) deep += "/d";
  fs::create_directories(at(deep));
  inAnother([&] {
    const Leftover tree(at("tree"));
    const Leftover file(at("file"));
    const Leftover link(at("link"));
    const Leftover missing(at("missing"));
    removeLeftovers();
  });
  for (const char* name : {"tree", "file", "link"}) {
    EXPECT_FALSE(fs::exists(fs::symlink_status(at(name)))) << name;
  }
  EXPECT_TRUE(fs::exists(at("outside/kept")));
}

TEST_F(Leftovers, StayOnceTheyAreForgotten) {
  write("forgotten");
  write("moved");
  write("noted");
  inAnother([&] {
    { const Leftover forgotten(at("forgotten")); }
    Leftover moved(at("moved"));
    { const Leftover gone = std::move(moved); }
    const Leftover noted(at("noted"));
    const Leftover tooLong(std::string(10'000, 'x'));
    removeLeftovers();
  });
  EXPECT_TRUE(fs::exists(at("forgotten")));
  EXPECT_TRUE(fs::exists(at("moved")));
  EXPECT_FALSE(fs::exists(at("noted")));
}

TEST_F(Leftovers, AreTheirOwnProcessesAlone) {
  write("ours");
  const Leftover ours(at("ours"));
  std::optional<TemporaryDirectory> directory(std::in_place);
  inAnother([] { removeLeftovers(); });
  EXPECT_TRUE(fs::exists(at("ours")));
  EXPECT_TRUE(fs::exists(directory->path()));
}

TEST_F(Leftovers, ManyAreNotedAndNoneInTheWayOfAnother) {
  inAnother([&] {
    for (int round = 0; round < 3; ++round) {
      std::vector<Leftover> all;
      all.reserve(100);
      for (int i = 0; i < 100; ++i) all.emplace_back(at(std::to_string(i)));
    }
    write("last");
    const Leftover last(at("last"));
    removeLeftovers();
  });
  EXPECT_FALSE(fs::exists(at("last")));
}

}  // namespace
}  // namespace host::files
