#include "bench/host_process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace tarnix::bench {
namespace {

[[noreturn]] void execute(const std::vector<std::string>& arguments,
                          const std::map<std::string, std::string>& environment) {
  for (const auto& [name, value] : environment) {
    setenv(name.c_str(), value.c_str(), 1);
  }
  const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(nowhere, STDOUT_FILENO);
  dup2(nowhere, STDERR_FILENO);
  std::vector<char*> pointers;
  for (const std::string& argument : arguments) {
    pointers.push_back(const_cast<char*>(argument.c_str()));
  }
  pointers.push_back(nullptr);
  execvp(pointers.front(), pointers.data());
  _exit(127);
}

std::chrono::microseconds toDuration(const timeval& time) {
  return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

}  // namespace

HostProcess::HostProcess(const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment)
    : pid_(fork()) {
  if (pid_ < 0) {
    fmt::print(stderr, "cannot start {}\n", arguments.front());
    std::exit(1);
  }
  if (pid_ == 0) {
    execute(arguments, environment);
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
