#include "scenario/deep_stack.h"

#include <cstddef>
#include <exception>
#include <pthread.h>
#include <system_error>

namespace tools::scenario {
namespace {

constexpr std::size_t kStackBytes = std::size_t{256} << 20;

struct Task {
  const std::function<void()>& work;
  std::exception_ptr failure;
};

void* run(void* argument) {
  auto& task = *static_cast<Task*>(argument);
  try {
    task.work();
  } catch (...) {
    task.failure = std::current_exception();
  }
  return nullptr;
}

void check(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

class Attributes {
 public:
  Attributes() { check(pthread_attr_init(&attributes_), "thread attributes"); }
  ~Attributes() { pthread_attr_destroy(&attributes_); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  pthread_attr_t* get() { return &attributes_; }

 private:
  pthread_attr_t attributes_{};
};

}  // namespace

void onDeepStack(const std::function<void()>& work) {
  Attributes attributes;
  check(pthread_attr_setstacksize(attributes.get(), kStackBytes), "stack size");
  Task task{work, nullptr};
  pthread_t thread{};
  check(pthread_create(&thread, attributes.get(), run, &task), "thread");
  pthread_join(thread, nullptr);
  if (task.failure) std::rethrow_exception(task.failure);
}

}  // namespace tools::scenario
