#include "host/files/device_root.h"

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "sample_device.h"

namespace host::files {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<std::string>;

class DeviceRootTest : public testing::TestWithParam<Resolution> {
 protected:
  SampleDevice device_;
  DeviceRoot root_ = device_.open(GetParam());
};

INSTANTIATE_TEST_SUITE_P(BothWays, DeviceRootTest, testing::ValuesIn(waysToResolve()), nameOfWay);

int errorOf(const auto& result) {
  return result ? 0 : result.failure().error;
}

TEST(DeviceRootOpen, MakesTheDirectoryOnlyWhenAsked) {
  const TemporaryDirectory directory;
  const fs::path path = directory.path() / "a" / "b";
  EXPECT_EQ(errorOf(DeviceRoot::open(path, DeviceRoot::Creation::kNever)), ENOENT);
  EXPECT_EQ(errorOf(DeviceRoot::open(path, DeviceRoot::Creation::kIfMissing)), 0);
  EXPECT_EQ(errorOf(DeviceRoot::open(path, DeviceRoot::Creation::kNever)), 0);
  SampleDevice::write(path / "file", "");
  EXPECT_EQ(errorOf(DeviceRoot::open(path / "file", DeviceRoot::Creation::kNever)), ENOTDIR);
  EXPECT_NE(errorOf(DeviceRoot::open(path / "file", DeviceRoot::Creation::kIfMissing)), 0);
}

TEST_P(DeviceRootTest, ReadsNoMoreThanTheCallerWants) {
  device_.file("/file", "12345");
  device_.file("/empty", "");
  EXPECT_EQ(*root_.readFile("/file", 5), "12345");
  EXPECT_EQ(errorOf(root_.readFile("/file", 4)), EFBIG);
  EXPECT_EQ(*root_.readFile("/empty", 0), "");
  const std::string large(300'000, 'x');
  device_.file("/large", large);
  EXPECT_EQ(*root_.readFile("/large", SIZE_MAX), large);
}

// procfs says 0 for the size of all its files: what a file that grows while it is read looks like.
TEST_P(DeviceRootTest, ReadsAFileThatIsLargerThanItsSize) {
  const auto proc = DeviceRoot::open("/proc", DeviceRoot::Creation::kNever, GetParam());
  ASSERT_TRUE(proc);
  EXPECT_EQ(*proc->readFile("/sys/kernel/ostype", 6), "Linux\n");
  EXPECT_EQ(errorOf(proc->readFile("/sys/kernel/ostype", 5)), EFBIG);
  EXPECT_GT(proc->readFile("/self/smaps", 1 << 24)->size(), 1000U);
}

TEST_P(DeviceRootTest, AFileTakesThePlaceOfWhateverIsThere) {
  device_.file("/file", "old");
  device_.file("/tree/below/file", "old");
  device_.directory("/empty");
  device_.link("/file-out", device_.absoluteWayOut() + "/kept");
  device_.link("/tree-out", device_.relativeWayOut());
  device_.link("/inside", "/file");
  device_.link("/var", "private");
  device_.directory("/private");
  const mode_t umask_before = ::umask(077);
  for (const std::string path : {"/file", "/tree", "/empty", "/file-out", "/tree-out", "/new",
                                 "/a/b/c", "/var/x/y", "/slash/", "relative"}) {
    SCOPED_TRACE(path);
    ASSERT_EQ(errorOf(root_.writeFile(path, "new " + path)), 0);
    const fs::path machine = device_.machine(path[0] == '/' ? path : "/" + path);
    const auto place = path.ends_with('/') ? machine.parent_path() : machine;
    struct stat status {};
    ASSERT_EQ(::lstat(place.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, S_IFREG | 0644U);
    EXPECT_EQ(SampleDevice::read(place), "new " + path);
  }
  ::umask(umask_before);
  EXPECT_EQ(*root_.list("/"),
            (Paths{"/a/b/c", "/empty", "/file", "/file-out", "/inside", "/new", "/private/x/y",
                   "/relative", "/slash", "/tree", "/tree-out", "/var"}));
  EXPECT_TRUE(device_.outsideIsUntouched());
}

TEST_P(DeviceRootTest, AWriteThatFailsLeavesNothingBehind) {
  using namespace std::string_literals;
  device_.file("/file", "old");
  device_.link("/out", device_.absoluteWayOut());
  const struct {
    std::string path;
    int error;
  } cases[] = {{"/", EISDIR},
               {"", EISDIR},
               {"/d/..", EISDIR},
               {"/d/.", EISDIR},
               {"/file/below", ENOTDIR},
               {"/d\0/x"s, EINVAL},
               {"/x\0y"s, EINVAL},
               {"/" + std::string(256, 'n'), ENAMETOOLONG},
               {"/out/new", ENOENT}};
  for (const auto& [path, error] : cases) {
    EXPECT_EQ(errorOf(root_.writeFile(path, "new")), error) << testing::PrintToString(path);
  }
  EXPECT_EQ(*root_.list("/"), (Paths{"/file", "/out"}));
  EXPECT_EQ(*root_.readFile("/file", 10), "old");
  EXPECT_FALSE(fs::exists(device_.outside() / "new"));
}

TEST_P(DeviceRootTest, APreparedFileWaitsForItsPlace) {
  device_.file("/d/file", "old");
  for (const Durability durability : {Durability::kNone, Durability::kSynced}) {
    auto prepared = root_.prepareFile("/d/file", "new", durability);
    ASSERT_TRUE(prepared);
    EXPECT_EQ(*root_.readFile("/d/file", 10), "old");
    EXPECT_EQ(root_.list("/d")->size(), 2U);
    { const auto dropped = std::move(*prepared); }
    EXPECT_EQ(*root_.list("/d"), (Paths{"/d/file"}));

    auto kept = root_.prepareFile("/made/for/it", "new", durability);
    ASSERT_TRUE(kept);
    EXPECT_EQ(errorOf(kept->putInPlace()), 0);
    EXPECT_EQ(*root_.list("/made"), (Paths{"/made/for/it"}));
  }
}

TEST_P(DeviceRootTest, WhatKilledWritersLeaveCanBeCleared) {
  device_.file("/d/.prismal-1-0", "half");
  device_.file("/d/.prismal-77-12", "half");
  device_.file("/d/.prismal.conf", "kept");
  device_.file("/d/below/.prismal-1-0", "kept");
  device_.link("/d/.prismal-2-0", device_.absoluteWayOut());
  EXPECT_EQ(errorOf(root_.removeNewFiles("/d")), 0);
  EXPECT_EQ(*root_.list("/d"), (Paths{"/d/.prismal.conf", "/d/below/.prismal-1-0"}));
  EXPECT_EQ(errorOf(root_.removeNewFiles("/none")), 0);
  EXPECT_TRUE(device_.outsideIsUntouched());
}

TEST_P(DeviceRootTest, RemovesAllOfADirectoryButWhatIsNamed) {
  device_.file("/d/kept/below/file", "x");
  device_.file("/d/file", "x");
  device_.file("/d/tree/below/file", "x");
  device_.file("/e/file", "x");
  device_.link("/d/link", "/e");
  device_.link("/d/out", device_.absoluteWayOut());
  device_.link("/l", "d");
  // A link in the place of the directory, with and without a slash behind it.
  for (const char* path : {"/l", "/l/"}) EXPECT_EQ(errorOf(root_.removeAllBut(path, {})), ENOTDIR);
  EXPECT_TRUE(root_.exists("/d/file"));

  for (const char* path : {"/d/", "/none", "/d"}) {
    EXPECT_EQ(errorOf(root_.removeAllBut(path, {"kept", "missing"})), 0) << path;
  }
  EXPECT_EQ(*root_.list("/"), (std::vector<std::string>{"/d/kept/below/file", "/e/file", "/l"}));
  EXPECT_TRUE(device_.outsideIsUntouched());
  EXPECT_EQ(errorOf(root_.removeAllBut("/e/file", {})), ENOTDIR);
}

TEST_P(DeviceRootTest, TreesMoveAndChangePlaces) {
  device_.file("/new/a", "new");
  EXPECT_EQ(errorOf(root_.moveTree("/new/", "/x/y/place")), 0);
  EXPECT_EQ(*root_.list("/"), (Paths{"/x/y/place/a"}));
  device_.file("/new/b", "newer");
  EXPECT_EQ(errorOf(root_.moveTree("/new", "/x/y/place")), 0);
  EXPECT_EQ(*root_.list("/"), (Paths{"/new/a", "/x/y/place/b"}));
  device_.link("/link", device_.absoluteWayOut());
  EXPECT_EQ(errorOf(root_.moveTree("/new", "/link")), 0);
  EXPECT_EQ(*root_.list("/"), (Paths{"/link/a", "/new", "/x/y/place/b"}));
  const struct {
    std::string from, to;
    int error;
  } refused[] = {{"/", "/z", EINVAL},     {"/x/..", "/z", EINVAL},      {"/x", "/y/..", EINVAL},
                 {"/none", "/z", ENOENT}, {"/x", "/x/y/below", EINVAL}, {"/x", "/new/z", ENOENT}};
  for (const auto& [from, to, error] : refused) {
    EXPECT_EQ(errorOf(root_.moveTree(from, to)), error) << from << " to " << to;
  }
  EXPECT_EQ(*root_.list("/"), (Paths{"/link/a", "/new", "/x/y/place/b"}));
  EXPECT_TRUE(device_.outsideIsUntouched());
}

TEST_P(DeviceRootTest, DirectoriesAreMadeInsideTheRoot) {
  device_.file("/file", "");
  device_.link("/var", "private/var");
  device_.link("/up", "../../..");
  device_.link("/out", device_.relativeWayOut());
  device_.directory("/private/var");
  EXPECT_EQ(errorOf(root_.makeDirectories("/")), 0);
  EXPECT_EQ(errorOf(root_.makeDirectories("/var/a//b/./c/")), 0);
  EXPECT_TRUE(fs::is_directory(device_.machine("/private/var/a/b/c")));
  EXPECT_EQ(errorOf(root_.makeDirectories("/up/../d/../e")), 0);
  EXPECT_TRUE(fs::is_directory(device_.machine("/d")));
  EXPECT_TRUE(fs::is_directory(device_.machine("/e")));
  EXPECT_EQ(errorOf(root_.makeDirectories("/file/a")), ENOTDIR);
  EXPECT_EQ(errorOf(root_.makeDirectories("/out/a")), ENOENT);
  EXPECT_EQ(errorOf(root_.makeDirectories("/" + std::string(256, 'n'))), ENAMETOOLONG);
  EXPECT_FALSE(fs::exists(device_.outside() / "a"));
}

TEST_P(DeviceRootTest, RemovesTheEntryAndNeverItsTarget) {
  device_.file("/target/file", "");
  device_.file("/tree/a/b/file", "");
  device_.link("/tree/a/out", device_.absoluteWayOut());
  device_.link("/tree/a/up", device_.relativeWayOut());
  device_.link("/inside", "/target");
  device_.link("/inside-slash", "/target");
  device_.link("/out", device_.absoluteWayOut());
  device_.link("/dangling", "nowhere");
  device_.pipe("/pipe");
  for (const char* path : {"/tree", "/inside", "/inside-slash/", "/out", "/dangling", "/pipe",
                           "/missing", "/missing/below", "/target/file/below", "/out/kept"}) {
    EXPECT_EQ(errorOf(root_.remove(path)), 0) << path;
    EXPECT_FALSE(fs::exists(fs::symlink_status(device_.machine(path)))) << path;
  }
  EXPECT_EQ(*root_.list("/"), (Paths{"/target/file"}));
  EXPECT_TRUE(device_.outsideIsUntouched());
}

TEST_P(DeviceRootTest, OfTheRootTheContentsAreRemoved) {
  for (const char* path : {"/", "///", "/..", "/.", "/tree/../.."}) {
    device_.file("/tree/file", "");
    device_.link("/out", device_.absoluteWayOut());
    EXPECT_EQ(errorOf(root_.remove(path)), 0) << path;
    EXPECT_TRUE(fs::is_empty(device_.machine("/"))) << path;
  }
  EXPECT_TRUE(device_.outsideIsUntouched());
}

TEST_P(DeviceRootTest, RemovesNothingForAPathThatNamesNoEntry) {
  using namespace std::string_literals;
  device_.file("/tree/below/file", "");
  for (const auto& [path, error] : {std::pair{""s, EINVAL},
                                    {"/tree/."s, EINVAL},
                                    {"/tree/below/.."s, EINVAL},
                                    {"/tree\0"s, EINVAL},
                                    {"/" + std::string(256, 'n'), ENAMETOOLONG}}) {
    EXPECT_EQ(errorOf(root_.remove(path)), error) << testing::PrintToString(path);
  }
  EXPECT_EQ(*root_.list("/"), (Paths{"/tree/below/file"}));
}

TEST_P(DeviceRootTest, ADeepTreeIsMadeListedAndRemoved) {
  std::string path;
  for (int i = 0; i < 100; ++i) path += "/d";
  EXPECT_EQ(errorOf(root_.writeFile(path + "/file", "")), 0);
  EXPECT_EQ(*root_.list("/"), (Paths{path + "/file"}));
  EXPECT_EQ(errorOf(root_.remove("/d")), 0);
  EXPECT_TRUE(fs::is_empty(device_.machine("/")));
}

TEST_P(DeviceRootTest, KnowsTheMachinesOwnRoot) {
  EXPECT_FALSE(root_.isMachineRoot());
  device_.link("/machine", "/");
  const auto machine = DeviceRoot::open(device_.machine("/machine"), DeviceRoot::Creation::kNever);
  EXPECT_TRUE(machine->isMachineRoot());
}

TEST_P(DeviceRootTest, ListsFilesSortedByBytes) {
  for (const char* path :
       {"/var/b", "/var/a/z", "/var/a-b", "/var/a.b", "/var/Z", "/var/\xc3\xa4", "/etc/x"}) {
    device_.file(path, "");
  }
  device_.directory("/var/empty");
  device_.link("/var/link", "/etc");
  device_.link("/var/out", device_.absoluteWayOut());
  device_.link("/private", "var");
  const Paths all = {"/var/Z", "/var/a-b",  "/var/a.b", "/var/a/z",
                     "/var/b", "/var/link", "/var/out", "/var/\xc3\xa4"};
  EXPECT_EQ(*root_.list("/var"), all);
  EXPECT_EQ(*root_.list("var//./"), all);
  EXPECT_EQ(*root_.list("/private/a"), (Paths{"/private/a/z"}));
  for (const char* path : {"/missing", "/var/b", "/var/empty", "/var/out"}) {
    EXPECT_EQ(*root_.list(path), Paths{}) << path;
  }
  EXPECT_EQ(errorOf(root_.list("")), EINVAL);
}

TEST(DefaultDeviceRoot, LiesInTheUsersDataDirectory) {
  const struct {
    const char* data_home;
    const char* home;
    const char* root;
  } cases[] = {{"/data", "/home/me", "/data/prismal/device"},
               {"data", "/home/me", "/home/me/.local/share/prismal/device"},
               {"", "/home/me", "/home/me/.local/share/prismal/device"},
               {nullptr, "/home/me", "/home/me/.local/share/prismal/device"},
               {nullptr, nullptr, ".local/share/prismal/device"}};
  const auto set = [](const char* name, const char* value) {
    if (value != nullptr)
      ::setenv(name, value, 1);
    else
      ::unsetenv(name);
  };
  const char* const before = std::getenv("HOME");
  const std::string home = before != nullptr ? before : "/";
  for (const auto& [data_home, value, root] : cases) {
    set("XDG_DATA_HOME", data_home);
    set("HOME", value);
    EXPECT_EQ(defaultDeviceRoot(), root);
  }
  set("XDG_DATA_HOME", nullptr);
  set("HOME", home.c_str());
}

TEST(TemporaryDirectory, GoesWithItsContentsAndNothingElse) {
  const TemporaryDirectory outer;
  SampleDevice::write(outer.path() / "kept", "");
  fs::path path;
  {
    TemporaryDirectory first;
    const TemporaryDirectory moved = std::move(first);
    path = moved.path();
    fs::create_directories(path / "a" / "b");
    fs::create_symlink(outer.path(), path / "a" / "link");
    EXPECT_TRUE(fs::is_directory(path));
  }
  EXPECT_FALSE(fs::exists(path));
  EXPECT_TRUE(fs::exists(outer.path() / "kept"));
}

}  // namespace
}  // namespace host::files
