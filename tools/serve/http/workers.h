#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tools::serve::http {

/// A few threads that do one piece of work after the other. Pieces that wait at the end are
/// dropped.
class Workers {
 public:
  explicit Workers(std::size_t count);
  Workers(const Workers&) = delete;
  Workers& operator=(const Workers&) = delete;
  ~Workers();

  /// Any thread; `work` must not throw.
  void submit(std::function<void()> work);

 private:
  void run();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> waiting_;
  bool ends_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace tools::serve::http
