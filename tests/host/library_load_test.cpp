#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

#include "host/files/temporary_directory.h"

namespace {

struct ProbeResult {
  int status;
  std::string output;
};

ProbeResult runProbe(const std::string& host) {
  const host::files::TemporaryDirectory root;
  const std::string command = host + " '" + root.path().string() + "' " PRISMAL_LIBRARY " 2>&1";
  FILE* const pipe = popen(command.c_str(), "r");
  std::string output;
  std::array<char, 256> buffer{};
  while (fgets(buffer.data(), buffer.size(), pipe)) output += buffer.data();
  return {WEXITSTATUS(pclose(pipe)), output};
}

TEST(LibraryLoad, SucceedsInAHostWithTheWholePlatform) {
  const ProbeResult result = runProbe(PROBE_HOST);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "loaded\n");
}

TEST(LibraryLoad, FailsInOneLineInAHostThatLacksAFunction) {
  const ProbeResult result = runProbe(PROBE_HOST_WITHOUT_NAMED_COLOR);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, PRISMAL_LIBRARY ": undefined symbol: UIKBGetNamedColor\n");
}

}  // namespace
