#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace tarnix::bench {

/// Prints what Google Benchmark prints, and then each group's times as ratios. A group is what
/// stands before the first "/" of a benchmark's name; its first member is what the others are
/// measured against.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  struct Result {
    std::string group;
    std::string variant;
    double nanoseconds = 0;
  };

  std::vector<Result> results_;
};

/// The `main` of a benchmark program.
int runBenchmarks(int argc, char** argv);

}  // namespace tarnix::bench
