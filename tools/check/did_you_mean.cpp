#include "check/did_you_mean.h"

#include "check/words.h"
#include "suggestion.h"

namespace tools::check {

std::string didYouMean(std::string_view written, std::span<const std::string_view> names) {
  const auto name = nearest(written, names);
  return name ? "; did you mean " + inQuotes(*name) + "?" : "";
}

}  // namespace tools::check
