#include "suggestion.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "support/characters.h"

namespace tools {

namespace {

/// Longer texts are no slips of the finger, and cost time; so do more names.
constexpr std::size_t kLongest = 64;
constexpr std::size_t kMostNames = 2000;

bool equalIgnoringCase(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, prismal::lowerCase, prismal::lowerCase);
}

/// The one name that ends with `written`; none when several do.
std::optional<std::string_view> onlyOneWith(std::string_view written,
                                            std::span<const std::string_view> names) {
  const auto ends = [&](std::string_view name) {
    return name != written && name.ends_with(written);
  };
  const auto found = std::ranges::find_if(names, ends);
  if (found == names.end() || std::ranges::count_if(names, ends) != 1) return std::nullopt;
  return *found;
}

}  // namespace

std::size_t editDistance(std::string_view one, std::string_view other) {
  // Three rows of the table of all beginnings of both texts: two back, one back, and this one.
  std::vector<std::size_t> before(other.size() + 1);
  std::vector<std::size_t> last(other.size() + 1);
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(last.begin(), last.end(), 0U);
  for (std::size_t i = 1; i <= one.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= other.size(); ++j) {
      const bool same = one[i - 1] == other[j - 1];
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0U : 1U)});
      const bool crossed =
          i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
      if (crossed) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(last);
    last.swap(row);
  }
  return last.back();
}

std::optional<std::string_view> nearest(std::string_view written,
                                        std::span<const std::string_view> names) {
  if (written.empty() || written.size() > kLongest) return std::nullopt;
  names = names.first(std::min(names.size(), kMostNames));
  std::optional<std::string_view> best;
  std::size_t least = std::max<std::size_t>(1, written.size() / 3) + 1;
  for (const std::string_view name : names) {
    if (name == written) continue;
    if (equalIgnoringCase(name, written)) return name;
    const std::size_t longer = std::max(name.size(), written.size());
    if (longer - std::min(name.size(), written.size()) >= least) continue;
    const std::size_t distance = editDistance(written, name);
    if (distance >= least) continue;
    least = distance;
    best = name;
  }
  return best ? best : onlyOneWith(written, names);
}

}  // namespace tools
