// These tests remove what a device path names, `/` included. Should the code under test ever
// resolve one outside its device root, the kernel must stand between it and the machine: before any
// test runs, this process gives up writing anywhere but in a temporary directory of its own.

#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "confinement.h"
#include "host/files/temporary_directory.h"

namespace {

TEST(Confinement, KeepsTheseTestsFromWritingElsewhere) {
  EXPECT_NE(::mkdir("/prismal-test", 0700), 0);
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // The tests run in a child, so that somebody is left who may remove the directory.
  const host::files::TemporaryDirectory directory;
  const pid_t child = ::fork();
  if (child == 0) {
    if (tests::confineWritingTo(directory.path().c_str())) {
      ::setenv("TMPDIR", directory.path().c_str(), 1);
    } else if (!tests::becomeNobody()) {
      std::cerr << "These tests must not run with the rights of root.\n";
      std::_Exit(1);
    }
    std::exit(RUN_ALL_TESTS());
  }
  int status = 1;
  if (child < 0 || ::waitpid(child, &status, 0) < 0) return 1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
