// Runs the contests, prints their ratios, and leaves the numbers for the page about them.
// Usage: prismal_bench [--rows=FILE] [options of Google Benchmark]

#include <benchmark/benchmark.h>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "contest.h"
#include "device.h"
#include "rows.h"
#include "times.h"

namespace {

struct Result {
  bench::Contest contest;
  bench::Time ours;
  bench::Time floor;
};

std::vector<Result> results(const bench::Times& times) {
  std::vector<Result> all;
  for (const bench::Contest& contest : bench::contests()) all.push_back({contest, {}, {}});
  for (const bench::Side& side : bench::sides()) {
    (side.isFloor ? all[side.contest].floor : all[side.contest].ours) += times.of(side.benchmark);
  }
  std::erase_if(all, [](const Result& result) { return result.ours.median_ns == 0; });
  return all;
}

void print(const std::vector<Result>& all) {
  std::printf("%-36s %-42s %11s %11s %7s %7s %6s\n", "", "against", "prismal ns", "floor ns",
              "ratio", "least", "limit");
  for (const auto& [contest, ours, floor] : all) {
    const double ratio = ours.median_ns / floor.median_ns;
    std::printf("%-36s %-42s %11.1f %11.1f %7.4f %7.4f %6g %s\n", contest.what.c_str(),
                contest.against.c_str(), ours.median_ns, floor.median_ns, ratio,
                ours.least_ns / floor.least_ns, contest.limit,
                contest.limit == 0       ? ""
                : ratio <= contest.limit ? "within"
                                         : "OVER");
  }
}

/// A line a contest, its fields between tabs.
void writeRows(const std::vector<Result>& all, const std::string& path) {
  std::ofstream file(path);
  for (const auto& [contest, ours, floor] : all) {
    file << contest.what << '\t' << contest.against << '\t' << contest.limit << '\t'
         << ours.median_ns << '\t' << floor.median_ns << '\t' << ours.least_ns << '\t'
         << floor.least_ns << '\n';
  }
}

/// Takes the option of that start off the arguments; empty when it isn't there.
std::string takeOption(int& argc, char** argv, std::string_view start) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (!argument.starts_with(start)) continue;
    for (int j = i; j + 1 < argc; ++j) argv[j] = argv[j + 1];
    --argc;
    return std::string(argument.substr(start.size()));
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  const std::string rows = takeOption(argc, argv, "--rows=");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  bench::startDevice();
  bench::addNamedColorContests();
  bench::addMatchingContests();
  bench::addTraitsContest();
  bench::addBackgroundContest();
  bench::Times times;
  benchmark::RunSpecifiedBenchmarks(&times);
  const auto all = results(times);
  print(all);
  if (!rows.empty()) writeRows(all, rows);
  return 0;
}
