#include "contest.h"

namespace bench {

namespace {

std::vector<Contest>& allContests() {
  static std::vector<Contest> all;
  return all;
}

std::vector<Side>& allSides() {
  static std::vector<Side> all;
  return all;
}

}  // namespace

std::span<const Contest> contests() {
  return allContests();
}

std::span<const Side> sides() {
  return allSides();
}

std::size_t addContest(Contest contest) {
  allContests().push_back(std::move(contest));
  return allContests().size() - 1;
}

void count(std::size_t contest, bool isFloor, const std::string& benchmark) {
  allSides().push_back({benchmark, contest, isFloor});
}

}  // namespace bench
