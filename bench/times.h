#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// What a piece of work takes, of many measurements.
struct Time {
  double median_ns = 0;
  double least_ns = 0;

  Time& operator+=(const Time& other) {
    median_ns += other.median_ns;
    least_ns += other.least_ns;
    return *this;
  }
};

/// Takes the measurements of a run of Google Benchmark; shows nothing.
class Times : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Of the processor's time, for one iteration; zeros for a benchmark that has not run.
  Time of(const std::string& benchmark) const;

 private:
  std::map<std::string, std::vector<double>> nanoseconds_;
};

}  // namespace bench
