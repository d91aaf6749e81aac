#pragma once

// The contests and the lines of growth, by subject. Each adds its benchmarks; the device must have
// been started.

namespace bench {

void addNamedColorContests();
void addMatchingContests();
void addTraitsContest();
void addBackgroundContest();
void addGrowth();

}  // namespace bench
