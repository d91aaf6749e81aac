#include "check/did_you_mean.h"

#include "check/words.h"
#include "suggestion.h"

namespace tools::check {

std::string asQuestion(std::optional<std::string_view> name) {
  return name ? "; did you mean " + inQuotes(*name) + "?" : "";
}

std::string didYouMean(std::string_view written, std::span<const std::string_view> names) {
  return asQuestion(tools::nearest(written, names));
}

std::string Suggestions::didYouMean(std::string_view written,
                                    std::span<const std::string_view> names) {
  return asQuestion(nearest(written, names));
}

std::optional<std::string_view> Suggestions::nearest(std::string_view written,
                                                     std::span<const std::string_view> names) {
  if (left_ == 0) return std::nullopt;
  --left_;
  return tools::nearest(written, names);
}

}  // namespace tools::check
