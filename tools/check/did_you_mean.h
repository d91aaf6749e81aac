#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tools::check {

/// The name that `written` is most likely to mean, as the end of a sentence: `; did you mean
/// "Portrait"?`, or nothing.
std::string didYouMean(std::string_view written, std::span<const std::string_view> names);

}  // namespace tools::check
