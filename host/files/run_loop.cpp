#include "host/files/run_loop.h"

#include <poll.h>
#include <utility>

namespace host::files {

struct RunLoop::Source {
  int fd;
  Task on_readable;
};

namespace {

constexpr int kNoWait = 0;
constexpr int kForever = -1;

}  // namespace

void RunLoop::post(Task task) {
  tasks_.push_back(std::move(task));
}

RunLoop::SourceToken RunLoop::watch(int fd, Task on_readable) {
  auto source = std::make_shared<const Source>(Source{fd, std::move(on_readable)});
  sources_.push_back(source);
  return source;
}

void RunLoop::drain() {
  while (runTasks() || runSources(kNoWait)) {
  }
}

bool RunLoop::runUntil(const std::function<bool()>& done) {
  while (!done()) {
    if (runTasks()) continue;
    std::erase_if(sources_, [](const auto& source) { return source.expired(); });
    if (sources_.empty()) return false;
    runSources(kForever);
  }
  return true;
}

// A round: what was queued when it began. What its tasks post waits for the next.
bool RunLoop::runTasks() {
  const bool any = !tasks_.empty();
  for (auto left = tasks_.size(); left > 0; --left) {
    const Task task = std::move(tasks_.front());
    tasks_.pop_front();
    task();
  }
  return any;
}

bool RunLoop::runSources(int timeout_ms) {
  std::vector<pollfd> polled;
  std::vector<std::weak_ptr<const Source>> asked;
  std::erase_if(sources_, [](const auto& source) { return source.expired(); });
  for (const auto& weak : sources_) {
    const auto source = weak.lock();
    polled.push_back({source->fd, POLLIN, 0});
    asked.push_back(weak);
  }
  if (::poll(polled.data(), polled.size(), timeout_ms) <= 0) return false;

  bool any = false;
  for (std::size_t i = 0; i < polled.size(); ++i) {
    if (polled[i].revents == 0) continue;
    const auto source = asked[i].lock();  // gone when an earlier callback let go of it
    if (!source) continue;
    if ((polled[i].revents & POLLNVAL) != 0) {
      // Its owner has closed it. Asked again, poll would return at once, for ever.
      std::erase_if(sources_, [&](const auto& weak) { return weak.lock() == source; });
      continue;
    }
    source->on_readable();
    any = true;
  }
  return any;
}

}  // namespace host::files
