#include "bench/ratio_reporter.h"

#include <fmt/format.h>

#include <map>

namespace tarnix::bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    // Of repeated runs the median counts; of a single run the run itself.
    const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
    const bool isSingle = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
    if (run.error_occurred || !(isMedian || isSingle)) {
      continue;
    }
    const std::string name =
        run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
    const std::size_t slash = name.find('/');
    const double perNanosecond = 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
    results_.push_back({name.substr(0, slash),
                        slash == std::string::npos ? "" : name.substr(slash + 1),
                        run.GetAdjustedRealTime() * perNanosecond});
  }
}

void RatioReporter::Finalize() {
  fmt::print("\n{:<24} {:<44} {:>14} {:>10}\n", "group", "variant", "time", "ratio");
  std::map<std::string, double> baselines;
  for (const Result& result : results_) {
    const double baseline = baselines.try_emplace(result.group, result.nanoseconds).first->second;
    fmt::print("{:<24} {:<44} {:>11.1f} us {:>9.2f}x\n", result.group, result.variant,
               result.nanoseconds / 1000, result.nanoseconds / baseline);
  }
}

int runBenchmarks(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

}  // namespace tarnix::bench
