#pragma once

// Contests: the library's own work beside a floor or a peer that does as much, in one run and in
// turns, so that what slows the machine down slows both.

#include <benchmark/benchmark.h>
#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// One line of the table.
struct Contest {
  std::string what;
  std::string against;
  /// How many times as long as the floor the library may take; 0: to be told, not judged.
  double limit = 0;
};

/// A benchmark that counts for a contest.
struct Side {
  std::string benchmark;  ///< its name
  std::size_t contest = 0;
  bool isFloor = false;
};

/// All that have been added, in order.
std::span<const Contest> contests();
std::span<const Side> sides();

/// Adds a contest and answers its number.
std::size_t addContest(Contest contest);

/// Counts a benchmark for a contest. What a contest has of floors is added up.
void count(std::size_t contest, bool isFloor, const std::string& benchmark);

/// Registers a benchmark: `run` takes a benchmark::State&, sets up and goes through its iterations.
template <class Run>
void addBenchmark(const std::string& name, Run run) {
  benchmark::RegisterBenchmark(name.c_str(), std::move(run));
}

/// Registers a contest of two benchmarks.
template <class Ours, class Floor>
void addContest(const Contest& contest, Ours ours, Floor floor) {
  const std::size_t number = addContest(contest);
  const std::string name = contest.what + "/" + contest.against + "/";
  count(number, false, name + "prismal");
  addBenchmark(name + "prismal", std::move(ours));
  count(number, true, name + "floor");
  addBenchmark(name + "floor", std::move(floor));
}

}  // namespace bench
