#include "host/files/run_loop.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

#include "host/files/descriptor.h"

namespace host::files {
namespace {

struct Pipe {
  Pipe() {
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
    out = Descriptor(ends[0]);
    in = Descriptor(ends[1]);
  }
  void put() const { EXPECT_EQ(::write(in.get(), "x", 1), 1); }
  void take() const {
    char byte = 0;
    EXPECT_EQ(::read(out.get(), &byte, 1), 1);
  }
  Descriptor out;
  Descriptor in;
};

TEST(RunLoop, RunsTasksInOrderAndWhatTheyPost) {
  RunLoop loop;
  std::string ran;
  loop.post([&] {
    ran += 'a';
    loop.post([&] { ran += 'c'; });
    ran += 'A';
  });
  loop.post([&] { ran += 'b'; });
  EXPECT_EQ(ran, "");
  loop.drain();
  EXPECT_EQ(ran, "aAbc");
  loop.drain();
  EXPECT_EQ(ran, "aAbc");
}

TEST(RunLoop, CallsASourceUntilItIsReadEmpty) {
  RunLoop loop;
  const Pipe pipe;
  int calls = 0;
  const auto token = loop.watch(pipe.out.get(), [&] { pipe.take(), ++calls; });
  loop.drain();
  EXPECT_EQ(calls, 0);
  pipe.put();
  pipe.put();
  loop.drain();
  EXPECT_EQ(calls, 2);
}

TEST(RunLoop, ASourceAndATaskKeepEachOtherGoing) {
  RunLoop loop;
  const Pipe pipe;
  int calls = 0;
  const auto token = loop.watch(pipe.out.get(), [&] {
    pipe.take();
    if (++calls < 3) loop.post([&] { pipe.put(); });
  });
  pipe.put();
  loop.drain();
  EXPECT_EQ(calls, 3);
}

TEST(RunLoop, ASourceWithoutItsTokenIsNotCalled) {
  RunLoop loop;
  const Pipe first;
  const Pipe second;
  int calls = 0;
  RunLoop::SourceToken tokens[2];
  tokens[0] = loop.watch(first.out.get(), [&] { tokens[1] = nullptr, first.take(), ++calls; });
  tokens[1] = loop.watch(second.out.get(), [&] { ADD_FAILURE() << "its token is gone"; });
  first.put();
  second.put();
  loop.drain();
  EXPECT_EQ(calls, 1);
}

TEST(RunLoop, ASourceMayEndItself) {
  RunLoop loop;
  const Pipe pipe;
  const auto captured = std::make_shared<int>(0);
  RunLoop::SourceToken token;
  token = loop.watch(pipe.out.get(), [&token, captured] { token = nullptr, ++*captured; });
  pipe.put();
  loop.drain();
  EXPECT_EQ(*captured, 1);
}

TEST(RunLoop, AClosedDescriptorIsLeftAlone) {
  RunLoop loop;
  const auto token =
      loop.watch(Descriptor(::dup(0)).get(), [] { ADD_FAILURE() << "it is closed"; });
  loop.drain();
  EXPECT_FALSE(loop.runUntil([] { return false; }));
}

TEST(RunLoop, RunsUntilThePredicateHolds) {
  RunLoop loop;
  const Pipe pipe;
  int calls = 0;
  const auto token = loop.watch(pipe.out.get(), [&] {
    pipe.take();
    ++calls;
    loop.post([&] { pipe.put(); });
  });
  pipe.put();
  EXPECT_TRUE(loop.runUntil([&] { return calls == 4; }));
  EXPECT_EQ(calls, 4);
}

TEST(RunLoop, StopsWhenNothingCanHappenAnyMore) {
  RunLoop loop;
  int calls = 0;
  loop.post([&] { ++calls; });
  EXPECT_FALSE(loop.runUntil([] { return false; }));
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace host::files
