#pragma once

namespace prismal {

/// A value that lives until the process ends and is never destroyed: what it holds belongs to the
/// host, which may be half gone when destructors of statics run.
template <class T>
class ProcessLifetime {
 public:
  constexpr ProcessLifetime() : value_() {}
  ~ProcessLifetime() {}  // NOLINT(modernize-use-equals-default): keeps the union's member alive
  ProcessLifetime(const ProcessLifetime&) = delete;
  ProcessLifetime& operator=(const ProcessLifetime&) = delete;

  T& operator*() { return value_; }
  T* operator->() { return &value_; }

 private:
  union {
    T value_;
  };
};

}  // namespace prismal
