#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/companion/spawn.h"
#include "tests/companion/temporary_folder.h"
#include "tests/integration/harness/output_collector.h"

namespace tarnix::integration {

struct HostOptions {
  /// On top of what every host gets.
  companion::Variables variables = {};
  /// Whether the library is preloaded.
  bool isProbed = true;
  /// Files that its home has before it starts: path inside of it, and contents.
  std::vector<std::pair<std::string, std::string>> homeFiles = {};
};

/// A real application, headless, with the probe in it, with a home of its own and in a process
/// group of its own. Ended with its owner.
class HostProcess {
 public:
  explicit HostProcess(const std::vector<std::string>& commandLine,
                       const HostOptions& options = {});
  ~HostProcess();
  HostProcess(const HostProcess&) = delete;
  HostProcess& operator=(const HostProcess&) = delete;

  pid_t pid() const { return pid_; }

  /// Waits for the probe to listen; a failure of the test and 0 when it does not come to that.
  std::uint16_t port();
  /// The same for a program that starts the application.
  std::optional<pid_t> probedDescendant();

  bool waitForErrorLine(const std::string& line) const;
  std::vector<std::string> errorLines() const { return errors_.lines(); }
  std::string output() const { return output_.text(); }

  bool isAlive();
  /// Waits for the process to end by itself; as wait(2) tells it, nothing when it does not end.
  std::optional<int> waitForEnd();
  void signal(int number) const;

  /// In bytes.
  std::size_t residentMemory() const;
  /// The most that it ever had, in bytes.
  std::size_t peakMemory() const;
  /// Waits until it has had nothing to do for a while.
  bool waitUntilIdle() const;

  const companion::TemporaryFolder& home() const { return home_; }

 private:
  /// In clock ticks.
  unsigned long processorTime() const;
  /// Looks whether it has ended, without waiting.
  void reap();

  companion::TemporaryFolder home_;
  OutputCollector output_;
  OutputCollector errors_;
  pid_t pid_ = -1;
  std::optional<int> end_;
};

/// What every program of a test is started with: nothing of this machine's desktop and message
/// buses, and the given folder as its home.
companion::Variables headlessVariables(const companion::TemporaryFolder& home);

}  // namespace tarnix::integration
