#include "host/files/open_in_root.h"

#include <atomic>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdio.h>
#include <string_view>
#include <thread>
#include <vector>

#include "sample_device.h"

namespace host::files {
namespace {

class LinkedDevice {
 protected:
  LinkedDevice() {
    device_.file("/data/file", "inside");
    device_.link("/absolute", "/data/file");
    device_.link("/up", "../../../../../../../../data/file");
    device_.link("/deep/a/b/up", "../../../../../data/");
    device_.link("/deep/a/b/absolute", "/data/file");
    device_.link("/directory", "/data");
    device_.link("/slash", "data/file/");
    device_.link("/loop", "loop");
    device_.link("/dangling", "nowhere");
    device_.link("/out", device_.absoluteWayOut());
    device_.link("/out-up", device_.relativeWayOut());
    device_.link("/link-1", "data/file");
    for (int i = 2; i <= 41; ++i) {
      device_.link("/link-" + std::to_string(i), "link-" + std::to_string(i - 1));
    }
    device_.pipe("/pipe");
  }

  SampleDevice device_;
};

class OpenInRoot : public LinkedDevice, public testing::TestWithParam<Resolution> {};
class LeadsOut : public LinkedDevice, public testing::Test {
 protected:
  void SetUp() override {
    if (waysToResolve().size() < 2) GTEST_SKIP() << "the kernel can't tell";
  }
};

INSTANTIATE_TEST_SUITE_P(BothWays, OpenInRoot, testing::ValuesIn(waysToResolve()), nameOfWay);

TEST_P(OpenInRoot, EveryPathEndsInsideOrNowhere) {
  using namespace std::string_literals;
  const struct {
    int error;  // 0: the file with the text "inside"
    std::vector<std::string> paths;
  } cases[] = {
      {0, {"/data/file", "data/file", "//data///./file", "/../data/file", "../../data/file"}},
      {0, {"/data/../../../data/file", "/absolute", "/deep/a/b/absolute", "/up", "/link-40"}},
      {0,
       {"/deep/a/b/up/file", "/deep/a/b/up/../data/file", "/directory/file",
        "/directory/../data/file"}},
      {0, {"/data/" + std::string(4084, '/') + "file"}},
      {ELOOP, {"/link-41", "/loop", "/loop/file"}},
      {ENOENT, {"/dangling", "/out", "/out/kept", "/out-up/kept", "/missing"}},
      {ENOENT, {"/missing/../data/file", "/" + std::string(255, 'n')}},
      {ENOTDIR, {"/data/file/", "/data/file/.", "/data/file/..", "/slash"}},
      {EISDIR, {"/data", "/data/", "/..", "/"}},
      {EINVAL, {"/pipe", "", "/data/file\0"s, "/data\0/file"s}},
      {ENAMETOOLONG, {"/" + std::string(256, 'n'), "/data/" + std::string(4086, '/') + "file"}}};
  const DeviceRoot root = device_.open(GetParam());
  for (const auto& [error, paths] : cases) {
    for (const auto& path : paths) {
      SCOPED_TRACE(testing::PrintToString(path.substr(0, 60)));
      const auto bytes = root.readFile(path, 100);
      EXPECT_EQ(bytes ? 0 : bytes.failure().error, error);
      EXPECT_EQ(bytes ? *bytes : "inside", "inside");
    }
  }
}

TEST_P(OpenInRoot, ExistsFollowsLinksInsideTheRoot) {
  const DeviceRoot root = device_.open(GetParam());
  for (const char* path :
       {"/", "/data", "/data/file", "/absolute", "/directory", "/pipe", "/../data"}) {
    EXPECT_TRUE(root.exists(path)) << path;
  }
  for (const char* path : {"", "/missing", "/dangling", "/loop", "/out", "/out-up", "/absolute/"}) {
    EXPECT_FALSE(root.exists(path)) << path;
  }
}

TEST_P(OpenInRoot, DescriptorsStayInThisProcess) {
  const DeviceRoot root = device_.open(GetParam());
  for (const auto& opened :
       {root.openPath("/pipe"), root.openDirectory("/data"), root.openFile("/data/file")}) {
    ASSERT_TRUE(opened);
    EXPECT_EQ(::fcntl(opened->get(), F_GETFD), FD_CLOEXEC);
  }
}

TEST_P(OpenInRoot, ALinkSwappedInWhileInUseLeadsNowhere) {
  device_.file("/swapped/kept", "inside");
  device_.link("/swap", device_.relativeWayOut());
  const DeviceRoot root = device_.open(GetParam());
  std::atomic<bool> done = false;
  std::thread swapper([&, one = device_.machine("/swapped"), other = device_.machine("/swap")] {
    while (!done) ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
  });
  for (int i = 0; i < 3000; ++i) {
    const auto bytes = root.readFile("/swapped/../swapped/kept", 100);
    EXPECT_EQ(bytes ? *bytes : "inside", "inside");
  }
  done = true;
  swapper.join();
}

TEST_F(LeadsOut, TellsAWayOutFromAFileThatIsMissing) {
  const std::string_view ways[] = {"out", "out/kept", "out-up/kept", "absolute", "../x", "up"};
  const std::string_view inside[] = {"data/file", "data/../data", "link-2", "dangling",
                                     "missing",   "loop",         ".",      ""};
  for (const auto path : ways) EXPECT_TRUE(device_.open().leadsOut(path)) << path;
  for (const auto path : inside) EXPECT_FALSE(device_.open().leadsOut(path)) << path;
}

}  // namespace
}  // namespace host::files
