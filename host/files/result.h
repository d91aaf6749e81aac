#pragma once

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>
#include <variant>

namespace host::files {

/// Why an operation failed: an errno value, and a sentence for people that names no path.
struct Failure {
  explicit Failure(int number) : error(number), reason(std::generic_category().message(number)) {}
  Failure(int number, std::string text) : error(number), reason(std::move(text)) {}

  int error;
  std::string reason;
};

/// The failure of the system call that has just returned.
inline Failure lastFailure() {
  return Failure(errno);
}

/// A value, or why there is none.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}            // NOLINT(*-explicit-*)
  Result(Failure failure) : value_(std::move(failure)) {}  // NOLINT(*-explicit-*)

  explicit operator bool() const { return value_.index() == 0; }
  /// Only where there is a value.
  T& operator*() & { return *std::get_if<0>(&value_); }
  const T& operator*() const& { return *std::get_if<0>(&value_); }
  T&& operator*() && { return std::move(*std::get_if<0>(&value_)); }
  T* operator->() { return std::get_if<0>(&value_); }
  const T* operator->() const { return std::get_if<0>(&value_); }
  /// Only where there is no value.
  const Failure& failure() const { return *std::get_if<1>(&value_); }
  const std::string& reason() const { return failure().reason; }

 private:
  std::variant<T, Failure> value_;
};

/// What an operation without a value returns.
struct Done {};

}  // namespace host::files
