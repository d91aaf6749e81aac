#include "support/nursery.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "support/require.h"

// The engine's counters of this program, one for each branch; there are none without the engine.
extern "C" {
extern std::uint8_t coverageBegin[] __asm__("__start___sancov_cntrs")
    __attribute__((weak, visibility("hidden")));
extern std::uint8_t coverageEnd[] __asm__("__stop___sancov_cntrs")
    __attribute__((weak, visibility("hidden")));
int __lsan_do_recoverable_leak_check() __attribute__((weak));  // NOLINT(*-reserved-identifier)
}

namespace fuzz {

using host::files::Descriptor;

/// The memory that all processes see; the counters follow it.
struct Nursery::Shared {
  std::size_t size;
  std::array<char, kMostBytes> input;
  std::uint8_t* counters() { return reinterpret_cast<std::uint8_t*>(this + 1); }
};

namespace {

// A session that hangs is the engine's to report; nobody waits for it much longer.
constexpr unsigned kLongest_s = 300;

/// How a process ends whose work is done, or can't be, or that found no more to do.
constexpr int kDone = 0;
constexpr int kBroken = 1;
constexpr int kNoMore = 2;

std::size_t counters() {
  return coverageBegin == nullptr ? 0 : static_cast<std::size_t>(coverageEnd - coverageBegin);
}

/// Looking for leaks takes longer than most work, so the engine goes without.
bool leaks() {
  return counters() == 0 && __lsan_do_recoverable_leak_check != nullptr &&
         __lsan_do_recoverable_leak_check() != 0;
}

struct Pipe {
  Descriptor reader;
  Descriptor writer;
};

Pipe makePipe() {
  std::array<int, 2> ends{};
  require(::pipe2(ends.data(), O_CLOEXEC) == 0, "a pipe can be made");
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

bool receive(const Descriptor& from, char& byte) {
  return TEMP_FAILURE_RETRY(::read(from.get(), &byte, 1)) == 1;
}

bool send(const Descriptor& to, char byte) {
  return ::write(to.get(), &byte, 1) == 1;
}

}  // namespace

Nursery::Nursery(const Duties& duties) {
  void* const memory = ::mmap(nullptr, sizeof(Shared) + counters() + 1, PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  require(memory != MAP_FAILED, "memory can be shared");
  shared_ = static_cast<Shared*>(memory);
  Pipe requests = makePipe();
  Pipe answers = makePipe();
  const pid_t server = ::fork();
  require(server >= 0, "a process can be started");
  if (server == 0) {
    requests.writer = Descriptor();  // or the end of it would never show
    requests_ = std::move(requests.reader);
    answers_ = std::move(answers.writer);
    serve(duties);
  }
  requests_ = std::move(requests.writer);
  answers_ = std::move(answers.reader);
}

void Nursery::serve(const Duties& duties) {
  duties.prepare();
  for (int status = 0; status != kNoMore;) {
    // Before there is an input: what waits for it is there already.
    const pid_t child = ::fork();
    require(child >= 0, "a process can be started");
    if (child == 0) work(duties);
    require(::waitpid(child, &status, 0) == child, "the process can be waited for");
    status = WIFEXITED(status) ? WEXITSTATUS(status) : kBroken;
    duties.tidy();
    // Done work has answered for itself.
    if (status != kDone && status != kNoMore && !send(answers_, '-')) break;
  }
  duties.leave();
  ::_exit(0);
}

void Nursery::work(const Duties& duties) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  char request = 0;
  if (!receive(requests_, request)) ::_exit(kNoMore);
  ::alarm(kLongest_s);
  if (counters() > 0) std::memset(coverageBegin, 0, counters());
  duties.work({shared_->input.data(), shared_->size});
  if (counters() > 0) std::memcpy(shared_->counters(), coverageBegin, counters());
  if (leaks() || !send(answers_, '+')) ::_exit(kBroken);
  ::_exit(kDone);
}

void Nursery::run(std::string_view input) {
  require(input.size() <= kMostBytes, "an input is small");
  shared_->size = input.size();
  if (!input.empty()) std::memcpy(shared_->input.data(), input.data(), input.size());
  char answer = '-';
  require(send(requests_, '.') && receive(answers_, answer), "the process that forks goes on");
  require(answer == '+', "a process comes to its end");
  if (counters() > 0) std::memcpy(coverageBegin, shared_->counters(), counters());
}

}  // namespace fuzz
