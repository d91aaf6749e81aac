#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace host::files {

/// The main queue and the event sources of a process. One thread only: the one that drains it.
class RunLoop {
 public:
  using Task = std::function<void()>;
  struct Source;
  /// Watches for as long as it is kept. May outlive the run loop.
  using SourceToken = std::shared_ptr<const Source>;

  /// Queues `task`; tasks run in the order in which they were posted, never from within post.
  void post(Task task);

  /// Calls `on_readable` whenever `fd` can be read or has been hung up; it should read until
  /// nothing is left. The descriptor stays the caller's, who keeps it open as long as the token.
  [[nodiscard]] SourceToken watch(int fd, Task on_readable);

  /// Runs everything that is ready, and what that makes ready, without waiting. Returns once
  /// nothing is: a task that always posts another keeps it from returning.
  void drain();

  /// Runs what gets ready, waiting for it, until `done` says so; it is asked after every round and
  /// after every signal. False when nothing is left that could still happen.
  bool runUntil(const std::function<bool()>& done);

 private:
  bool runTasks();
  bool runSources(int timeout_ms);

  std::deque<Task> tasks_;
  std::vector<std::weak_ptr<const Source>> sources_;
};

}  // namespace host::files
