#include "times.h"

#include <algorithm>

namespace bench {

void Times::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
    nanoseconds_[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
  }
}

Time Times::of(const std::string& benchmark) const {
  const auto found = nanoseconds_.find(benchmark);
  if (found == nanoseconds_.end()) return {};
  std::vector<double> sorted = found->second;
  std::ranges::sort(sorted);
  return {sorted[sorted.size() / 2], sorted.front()};
}

}  // namespace bench
