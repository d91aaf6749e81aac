#include "check/finding.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "check/words.h"

namespace tools::check {

namespace {

auto orderOf(const Finding& finding) {
  const auto& position = finding.place.position;
  return std::tuple(position.line, position.column);
}

}  // namespace

void Findings::add(const Rule& rule, Place place, std::string_view message, std::string_view log) {
  constexpr std::size_t kLongest = 500;
  if (++counts_[&rule] > kMostOfARule) return;
  Finding& finding = findings_.emplace_back();
  finding.rule = &rule;
  finding.place = std::move(place);
  finding.message = inOneLine(message, kLongest);
  finding.log = inOneLine(log, kLongest);
}

std::vector<Finding> Findings::take() && {
  std::ranges::stable_sort(findings_, {}, orderOf);
  for (const auto& [rule, count] : counts_) {
    if (count <= kMostOfARule) continue;
    Finding& rest = findings_.emplace_back();
    rest.rule = rule;
    rest.message = "and " + std::to_string(count - kMostOfARule) + " more like this";
  }
  return std::move(findings_);
}

}  // namespace tools::check
