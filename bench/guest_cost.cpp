// What a host pays for being probed when nobody asks anything of it: processor time until it is up,
// processor time while idle, and memory. Each application is started in turn with and without the
// probe, in one run, headless.
//
//     bench_guest_cost LIBRARY_FOLDER [ROUNDS]

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "bench/host_process.h"

namespace tarnix::bench {
namespace {

using std::chrono::microseconds;
using std::chrono::seconds;

// The launch, the server's start half a second after it, and time for both to settle.
constexpr seconds startUp{2};
constexpr seconds idleTime{10};

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double milliseconds(microseconds time) { return static_cast<double>(time.count()) / 1000; }

struct Host {
  std::string name;
  std::vector<std::string> arguments;
};

/// A home folder of its own for each start, so that no start finds what another left behind.
class Home {
 public:
  Home() {
    char pattern[] = "/tmp/tarnix_bench_XXXXXX";
    path_ = mkdtemp(pattern);
  }
  ~Home() { std::filesystem::remove_all(path_); }
  Home(const Home&) = delete;
  Home& operator=(const Home&) = delete;

  std::map<std::string, std::string> with(std::map<std::string, std::string> environment) const {
    environment["HOME"] = path_;
    environment["XDG_RUNTIME_DIR"] = path_;
    environment["TMPDIR"] = path_;
    return environment;
  }

 private:
  std::string path_;
};

struct Cost {
  std::vector<double> startUpMilliseconds;
  std::vector<double> megabytes;
};

void start(const Host& host, const std::map<std::string, std::string>& environment, Cost& cost) {
  const Home home;
  HostProcess process(host.arguments, home.with(environment));
  std::this_thread::sleep_for(startUp);
  cost.startUpMilliseconds.push_back(milliseconds(process.processorTime()));
  cost.megabytes.push_back(static_cast<double>(process.residentMemory()) / 1e6);
}

/// Percent of one core.
double idleLoad(const Host& host, const std::map<std::string, std::string>& environment) {
  const Home home;
  HostProcess process(host.arguments, home.with(environment));
  std::this_thread::sleep_for(startUp * 2);
  const microseconds before = process.processorTime();
  std::this_thread::sleep_for(idleTime);
  const microseconds used = process.processorTime() - before;
  return 100.0 * static_cast<double>(used.count()) /
         static_cast<double>(microseconds(idleTime).count());
}

void measure(const Host& host, const std::map<std::string, std::string>& probe, int rounds) {
  Cost bare;
  Cost with;
  for (int round = 0; round < rounds; ++round) {
    start(host, {}, bare);
    start(host, probe, with);
  }
  const double bareStart = median(bare.startUpMilliseconds);
  const double withStart = median(with.startUpMilliseconds);
  fmt::print("{:<12} start-up   {:8.1f} ms without, {:8.1f} ms with: {:+.1f} ms, ratio {:.3f}\n",
             host.name, bareStart, withStart, withStart - bareStart, withStart / bareStart);
  const double bareMemory = median(bare.megabytes);
  const double withMemory = median(with.megabytes);
  fmt::print("{:<12} memory     {:8.1f} MB without, {:8.1f} MB with: {:+.1f} MB, ratio {:.3f}\n",
             host.name, bareMemory, withMemory, withMemory - bareMemory, withMemory / bareMemory);
  const double bareIdle = idleLoad(host, {});
  const double withIdle = idleLoad(host, probe);
  fmt::print("{:<12} idle       {:8.3f} %  without, {:8.3f} %  with: {:+.3f} % of one core\n",
             host.name, bareIdle, withIdle, withIdle - bareIdle);
}

}  // namespace
}  // namespace tarnix::bench

int main(int argc, char** argv) {
  if (argc < 2) {
    fmt::print(stderr, "usage: bench_guest_cost LIBRARY_FOLDER [ROUNDS]\n");
    return 2;
  }
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 7;
  fmt::print("medians of {} starts each, processor time after {} s; bounds: +15 ms, +0.5 %\n",
             rounds, tarnix::bench::startUp.count());
  for (const tarnix::bench::Host& host : {tarnix::bench::Host{"pentobi", {"pentobi"}},
                                          tarnix::bench::Host{"focuswriter", {"focuswriter"}}}) {
    tarnix::bench::measure(host, tarnix::bench::probed(argv[1]), rounds);
  }
  return 0;
}
