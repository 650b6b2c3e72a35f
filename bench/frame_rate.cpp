// How well the frame rate that a companion is told fits a known load: an application at rest, and
// ones whose main loop is busy for part of the time. A frame that falls into a busy stretch is
// lost, but for the last one, which is shown when the stretch ends.
//
//     bench_frame_rate LIBRARY_FOLDER BUSY_HOST

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "bench/host_process.h"
#include "companion/client/companion_client.h"
#include "companion/discovery/process_scanner.h"
#include "probe/model/perf_snapshot_response.h"

namespace tarnix::bench {
namespace {

using companion::CompanionClient;
using std::chrono::seconds;

constexpr double refreshRate = 60;
constexpr int readings = 8;
constexpr seconds startUpLimit{30};
constexpr seconds settling{3};

struct Load {
  int busyMilliseconds;
  int periodMilliseconds;

  double expectedRate() const {
    if (busyMilliseconds == 0) {
      return refreshRate;
    }
    const double stretches = 1000.0 / periodMilliseconds;
    const double framesInside = busyMilliseconds * refreshRate / 1000;
    return refreshRate - stretches * std::max(framesInside - 1, 0.0);
  }
};

std::optional<CompanionClient> connectTo(const HostProcess& host) {
  const companion::ProcessScanner scanner;
  const companion::Deadline limit = companion::deadlineIn(startUpLimit);
  while (!companion::isOver(limit)) {
    const auto found = scanner.inspect({host.pid()});
    if (!found.empty() && found.front().ports.size() == 1) {
      auto client = CompanionClient::connect({.port = found.front().ports.front()}, limit);
      return client ? std::optional(std::move(*client)) : std::nullopt;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return std::nullopt;
}

/// Negative without an answer.
double readRate(CompanionClient& client) {
  const auto answer = client.request(
      companion::makeCommand(CompanionMessageType::commandPerfSnapshot),
      CompanionMessageType::responsePerfSnapshot, companion::deadlineIn(seconds(10)));
  const auto response = answer ? answer->decode<PerfSnapshotResponse>() : std::nullopt;
  return response ? response->fps : -1;
}

bool measure(const std::string& libraries, const std::string& program, const Load& load) {
  const HostProcess host(
      {program, std::to_string(load.busyMilliseconds), std::to_string(load.periodMilliseconds)},
      probed(libraries));
  std::optional<CompanionClient> client = connectTo(host);
  if (!client) {
    fmt::print("the application did not come up\n");
    return false;
  }
  std::this_thread::sleep_for(settling);
  std::vector<double> rates;
  for (int reading = 0; reading < readings; ++reading) {
    rates.push_back(readRate(*client));
    std::this_thread::sleep_for(seconds(1));
  }
  std::sort(rates.begin(), rates.end());
  const double median = rates[rates.size() / 2];
  fmt::print(
      "  busy {:>3} of {:>3} ms   expected {:5.1f}   told {:5.1f} ({:.1f} to {:.1f})   off by "
      "{:.1f} %\n",
      load.busyMilliseconds, load.periodMilliseconds, load.expectedRate(), median, rates.front(),
      rates.back(), std::abs(median / load.expectedRate() - 1) * 100);
  return rates.front() >= 0;
}

}  // namespace
}  // namespace tarnix::bench

int main(int argc, char** argv) {
  if (argc != 3) {
    fmt::print(stderr, "usage: bench_frame_rate LIBRARY_FOLDER BUSY_HOST\n");
    return 2;
  }
  fmt::print("frames a second, medians of {} readings\n", tarnix::bench::readings);
  constexpr tarnix::bench::Load loads[] = {{0, 0}, {50, 200}, {100, 200}, {400, 500}};
  for (const tarnix::bench::Load& load : loads) {
    if (!tarnix::bench::measure(argv[1], argv[2], load)) {
      return 1;
    }
  }
  return 0;
}
