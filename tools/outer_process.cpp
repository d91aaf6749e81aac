#include "outer_process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>

#include "descriptor_io.h"

namespace tools {

using host::files::Descriptor;
using host::files::Done;
using host::files::Result;

namespace {

/// The end of the other process, however it comes, is what ends this one: it has to clear away.
void outliveSignals() {
  prctl(PR_SET_PDEATHSIG, 0);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) std::signal(signal, SIG_IGN);
}

Result<std::string> wait(int asked, const OuterProcess::Work& work) {
  char word = 0;
  Result<Done> finished = Done();
  if (readAll(asked, &word, sizeof word)) finished = work.finish();
  work.clearAway();
  if (!finished) return finished.failure();
  return std::string();
}

}  // namespace

Result<OuterProcess> OuterProcess::start(const Work& work) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return host::files::lastFailure();
  const Descriptor asked(ends[0]);
  Descriptor asking(ends[1]);
  auto process = ChildProcess::start([&] {
    outliveSignals();
    asking = Descriptor();
    return wait(asked.get(), work);
  });
  if (!process) return process.failure();
  return OuterProcess(*std::move(process), std::move(asking));
}

Result<Done> OuterProcess::finish() {
  const char word = 1;
  if (!writeAll(asking_.get(), &word, sizeof word)) return host::files::lastFailure();
  const auto answer = process_.bytes();
  if (!answer) return answer.failure();
  return Done();
}

}  // namespace tools
