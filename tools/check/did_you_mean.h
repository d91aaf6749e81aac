#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tools::check {

/// `; did you mean "Portrait"?`, the end of a sentence; of no name nothing.
std::string asQuestion(std::optional<std::string_view> name);

/// The name that `written` is most likely to mean, likewise.
std::string didYouMean(std::string_view written, std::span<const std::string_view> names);

/// Suggestions for what is wrong in a theme. After some thousands it has none any more: they take
/// time, and nobody has misspelt so much.
class Suggestions {
 public:
  std::string didYouMean(std::string_view written, std::span<const std::string_view> names);
  /// The name alone.
  std::optional<std::string_view> nearest(std::string_view written,
                                          std::span<const std::string_view> names);

 private:
  std::size_t left_ = 2000;
};

}  // namespace tools::check
