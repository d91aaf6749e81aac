#include "command_line/suggestion.h"

#include <algorithm>
#include <cstddef>

namespace tools::command_line {

namespace {

/// How many slips of the fingers lie between two words.
std::size_t distanceOf(std::string_view one, std::string_view other) {
  // distances[i][j]: between the first i characters of one and the first j of the other.
  std::vector distances(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
  for (std::size_t i = 0; i <= one.size(); ++i) {
    for (std::size_t j = 0; j <= other.size(); ++j) {
      std::size_t& distance = distances[i][j];
      distance = std::max(i, j);
      if (i == 0 || j == 0) continue;
      const std::size_t exchanged = one[i - 1] == other[j - 1] ? 0 : 1;
      distance = std::min(
          {distances[i - 1][j] + 1, distances[i][j - 1] + 1, distances[i - 1][j - 1] + exchanged});
      const bool swapped =
          i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1];
      if (swapped) distance = std::min(distance, distances[i - 2][j - 2] + 1);
    }
  }
  return distances[one.size()][other.size()];
}

}  // namespace

std::optional<std::string> suggestionFor(std::string_view mistyped,
                                         const std::vector<std::string>& words) {
  std::optional<std::string> nearest;
  std::size_t least = 0;
  for (const std::string& word : words) {
    // Words of other length are further apart than anybody slips.
    if (mistyped.size() > 2 * word.size()) continue;
    const std::size_t distance = distanceOf(mistyped, word);
    if (3 * distance > word.size() || (nearest && distance >= least)) continue;
    nearest = word;
    least = distance;
  }
  return nearest;
}

}  // namespace tools::command_line
