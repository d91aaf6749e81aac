#include "serve/http/workers.h"

#include <utility>

namespace tools::serve::http {

Workers::Workers(std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) threads_.emplace_back([this] { run(); });
}

Workers::~Workers() {
  {
    const std::scoped_lock lock(mutex_);
    ends_ = true;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void Workers::submit(std::function<void()> work) {
  {
    const std::scoped_lock lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  changed_.notify_one();
}

void Workers::run() {
  for (;;) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return ends_ || !waiting_.empty(); });
    if (ends_) return;
    const auto work = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    work();
  }
}

}  // namespace tools::serve::http
