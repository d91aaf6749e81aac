#include "render/workers.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace tools::render {

void inParallel(std::size_t count,
                const std::function<void(std::size_t, host::drawing::Fonts&)>& work,
                const std::function<void(std::size_t)>& finished) {
  std::atomic<std::size_t> next = 0;
  std::atomic<std::size_t> done = 0;
  const auto run = [&](const auto& afterEach) {
    host::drawing::Fonts fonts;
    for (std::size_t i = next++; i < count; i = next++) {
      work(i, fonts);
      ++done;
      afterEach();
    }
  };
  const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
  std::vector<std::jthread> others;
  for (std::size_t i = 1; i < std::min(processors, count); ++i) {
    others.emplace_back([&run] { run([] {}); });
  }
  run([&] { finished(done); });
}

}  // namespace tools::render
