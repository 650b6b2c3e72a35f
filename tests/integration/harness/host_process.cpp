#include "tests/integration/harness/host_process.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "companion/discovery/process_scanner.h"
#include "tests/integration/harness/wait_until.h"

namespace tarnix::integration {

using companion::ProbedProcess;
using companion::ProcessScanner;
using companion::Variables;

Variables headlessVariables(const companion::TemporaryFolder& home) {
  const std::string folder = home.path().string();
  return {{"HOME", folder},
          {"TMPDIR", folder},
          {"XDG_CACHE_HOME", folder + "/cache"},
          {"XDG_CONFIG_HOME", folder + "/config"},
          {"XDG_DATA_HOME", folder + "/data"},
          {"XDG_RUNTIME_DIR", folder},
          {"LC_ALL", "C.UTF-8"},
          {"LANGUAGE", ""},
          {"LD_PRELOAD", ""},
          {"DISPLAY", ""},
          {"WAYLAND_DISPLAY", ""},
          {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
          {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus"},
          {"QT_QPA_PLATFORM", "offscreen"},
          {"QT_QUICK_BACKEND", "software"},
          {"QT_QUICK_CONTROLS_STYLE", "Basic"}};
}

HostProcess::HostProcess(const std::vector<std::string>& commandLine, const HostOptions& options) {
  for (const auto& [name, contents] : options.homeFiles) {
    std::filesystem::create_directories((home_ / name).parent_path());
    std::ofstream(home_ / name) << contents;
  }
  Variables variables = headlessVariables(home_);
  if (options.isProbed) {
    variables.emplace_back("LD_PRELOAD", TARNIX_LIBRARY_DIRECTORY "/libtarnixprobe.so");
  }
  variables.insert(variables.end(), options.variables.begin(), options.variables.end());
  // The last value of a name is the one that counts.
  Variables unique;
  for (const auto& variable : variables) {
    std::erase_if(unique, [&](const auto& earlier) { return earlier.first == variable.first; });
    unique.push_back(variable);
  }
  pid_ = companion::spawn(commandLine, unique, {-1, output_.programsEnd(), errors_.programsEnd()});
  output_.closeProgramsEnd();
  errors_.closeProgramsEnd();
}

HostProcess::~HostProcess() {
  if (pid_ <= 0 || !isAlive()) {
    return;
  }
  // The group is the program's own; what it started ends with it.
  kill(-pid_, SIGTERM);
  kill(-pid_, SIGCONT);
  constexpr std::chrono::seconds grace{3};
  if (!waitUntil([this] { return !isAlive(); }, grace)) {
    kill(-pid_, SIGKILL);
    waitForEnd();
  }
}

std::uint16_t HostProcess::port() {
  const ProcessScanner scanner;
  const auto found = waitUntil([&]() -> std::optional<ProbedProcess> {
    for (ProbedProcess& process : scanner.inspect(scanner.familyOf(pid_))) {
      if (!process.ports.empty()) {
        return std::move(process);
      }
    }
    return isAlive() ? std::nullopt : std::optional(ProbedProcess{});
  });
  if (found && !found->ports.empty()) {
    return found->ports.front();
  }
  ADD_FAILURE() << "no probe listens; the host is " << (isAlive() ? "alive" : "gone") << ", used "
                << processorTime() << " clock ticks, and said:\n"
                << errors_.text();
  return 0;
}

std::optional<pid_t> HostProcess::probedDescendant() {
  const ProcessScanner scanner;
  const auto found = scanner.inspect(scanner.familyOf(pid_));
  return found.empty() ? std::nullopt : std::optional(found.front().pid);
}

bool HostProcess::waitForErrorLine(const std::string& line) const {
  return waitUntil([&] {
    const std::vector<std::string> lines = errors_.lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  });
}

void HostProcess::reap() {
  int status = 0;
  if (!end_ && pid_ > 0 && waitpid(pid_, &status, WNOHANG) == pid_) {
    end_ = status;
  }
}

bool HostProcess::isAlive() {
  reap();
  return pid_ > 0 && !end_;
}

std::optional<int> HostProcess::waitForEnd() {
  waitUntil([this] { return !isAlive(); });
  return end_;
}

void HostProcess::signal(int number) const {
  if (pid_ > 0 && !end_) {
    kill(pid_, number);
  }
}

std::size_t HostProcess::peakMemory() const {
  std::ifstream file("/proc/" + std::to_string(pid_) + "/status");
  std::string word;
  while (file >> word) {
    if (std::size_t kilobytes = 0; word == "VmHWM:" && file >> kilobytes) {
      return kilobytes * 1024;
    }
  }
  return 0;
}

unsigned long HostProcess::processorTime() const {
  std::ifstream file("/proc/" + std::to_string(pid_) + "/stat");
  std::string text;
  std::getline(file, text);
  std::istringstream rest(text.substr(std::min(text.rfind(')') + 1, text.size())));
  std::string skipped;
  // From the state to the last fault count.
  constexpr int fieldsBefore = 11;
  for (int field = 0; field < fieldsBefore; ++field) {
    rest >> skipped;
  }
  unsigned long user = 0;
  unsigned long system = 0;
  rest >> user >> system;
  return user + system;
}

bool HostProcess::waitUntilIdle() const {
  constexpr std::chrono::milliseconds quiet{500};
  unsigned long last = processorTime();
  auto since = std::chrono::steady_clock::now();
  return waitUntil([&] {
    if (const unsigned long now = processorTime(); now != last) {
      last = now;
      since = std::chrono::steady_clock::now();
    }
    return std::chrono::steady_clock::now() - since > quiet;
  });
}

std::size_t HostProcess::residentMemory() const {
  std::ifstream file("/proc/" + std::to_string(pid_) + "/statm");
  std::size_t total = 0;
  std::size_t resident = 0;
  file >> total >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace tarnix::integration
