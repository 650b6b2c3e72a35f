#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <variant>

#include "companion/command/host_answer.h"
#include "companion/command/screen_commands.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "probe/model/perf_snapshot_response.h"

namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

std::string headingOf(const Terminal& terminal) {
  return terminal.styled(fmt::format("{:>6} {:>8} {:>10} {:>10}  {}", "FPS", "AVERAGE", "MEMORY MB",
                                     "PEAK MB", "SCREEN"),
                         Style::heading) +
         "\n";
}

/// The peak is that of the samples that the probe took before; now may be above it.
std::string lineOf(const PerfSnapshotResponse& perf) {
  return fmt::format("{:>6.1f} {:>8.1f} {:>10.1f} {:>10.1f}  {}\n", perf.fps, perf.avgFPS,
                     perf.memoryMB, std::max(perf.peakMemoryMB, perf.memoryMB),
                     printable(perf.screen));
}

}  // namespace

ExitCode runPerf(const CommandOptions& options, const PerfOptions& perf) {
  std::variant<HostSession, ExitCode> session = openSession(options, deadlineIn(options.timeout()));
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  const auto interval = std::chrono::duration_cast<std::chrono::steady_clock::duration>(
      std::chrono::duration<double>(perf.intervalSeconds));
  std::string heading = options.json ? "" : headingOf(Terminal::standardOutput(options.noColor));
  Deadline next = deadlineIn({});
  for (std::uint64_t shown = 1;; ++shown) {
    const auto answer = ask<PerfSnapshotResponse>(
        std::get<HostSession>(session), makeCommand(Type::commandPerfSnapshot),
        Type::responsePerfSnapshot, deadlineIn(options.timeout()), options);
    if (const ExitCode* code = std::get_if<ExitCode>(&answer)) {
      return *code;
    }
    const auto& [response, payload] = std::get<0>(answer);
    const ExitCode written = writeToStandardOutput(
        options.json ? printableJson(payload) + "\n" : heading + lineOf(response), options);
    if (written != ExitCode::success || !perf.watch || shown == perf.count) {
      return written;
    }
    heading.clear();
    next += interval;
    std::this_thread::sleep_until(next);
  }
}

}  // namespace tarnix::companion
