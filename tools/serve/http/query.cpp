#include "serve/http/query.h"

#include <algorithm>

namespace tools::serve::http {

std::optional<std::vector<std::pair<std::string_view, std::string_view>>> splitQuery(
    std::string_view target) {
  std::vector<std::pair<std::string_view, std::string_view>> pairs;
  const auto question = target.find('?');
  if (question == target.npos || question + 1 == target.size()) return pairs;
  std::size_t begin = question + 1;
  while (begin <= target.size()) {
    const auto end = std::min(target.find('&', begin), target.size());
    const std::string_view pair = target.substr(begin, end - begin);
    const auto equals = pair.find('=');
    if (equals == 0 || equals == pair.npos) return std::nullopt;
    pairs.emplace_back(pair.substr(0, equals), pair.substr(equals + 1));
    begin = end + 1;
  }
  return pairs;
}

}  // namespace tools::serve::http
