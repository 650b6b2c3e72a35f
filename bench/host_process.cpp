#include "bench/host_process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

namespace tarnix::bench {
namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

/// This process's environment with `more` in the place of variables of the same name.
std::vector<std::string> environmentWith(const std::map<std::string, std::string>& more) {
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string text = *variable;
    if (!more.contains(text.substr(0, text.find('=')))) {
      variables.push_back(text);
    }
  }
  for (const auto& [name, value] : more) {
    variables.push_back(name + "=" + value);
  }
  return variables;
}

/// Returns the error number, or 0.
int start(std::vector<std::string> arguments, std::vector<std::string> environment, pid_t& pid) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
  }
  const int error = posix_spawnp(&pid, arguments.front().c_str(), &actions, nullptr,
                                 pointersTo(arguments).data(), pointersTo(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  return error;
}

std::chrono::microseconds toDuration(const timeval& time) {
  return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

}  // namespace

HostProcess::HostProcess(const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment) {
  if (const int error = start(arguments, environmentWith(environment), pid_); error != 0) {
    fmt::print(stderr, "cannot start {}: {}\n", arguments.front(), std::strerror(error));
    std::exit(1);
  }
}

HostProcess::~HostProcess() {
  if (pid_ > 0) {
    stop();
  }
}

std::chrono::microseconds HostProcess::processorTime() const {
  clockid_t clock = 0;
  timespec time{};
  if (clock_getcpuclockid(pid_, &clock) != 0 || clock_gettime(clock, &time) != 0) {
    return {};
  }
  return std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

std::size_t HostProcess::residentMemory() const {
  std::ifstream statm(fmt::format("/proc/{}/statm", pid_));
  std::size_t total = 0;
  std::size_t resident = 0;
  statm >> total >> resident;
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::chrono::microseconds HostProcess::stop() {
  kill(pid_, SIGTERM);
  rusage usage{};
  int status = 0;
  wait4(pid_, &status, 0, &usage);
  pid_ = -1;
  return toDuration(usage.ru_utime) + toDuration(usage.ru_stime);
}

std::map<std::string, std::string> probed(const std::string& libraryFolder) {
  return {{"LD_PRELOAD", libraryFolder + "/libtarnixprobe.so"}};
}

}  // namespace tarnix::bench
