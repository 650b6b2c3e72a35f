#pragma once

#include <sys/types.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace tarnix::bench {

/// A host application in a process of its own, its output thrown away. Ended with the object.
class HostProcess {
 public:
  /// `environment` is added to this process's own. Ends the program when it cannot be started.
  HostProcess(const std::vector<std::string>& arguments,
              const std::map<std::string, std::string>& environment);
  ~HostProcess();
  HostProcess(const HostProcess&) = delete;
  HostProcess& operator=(const HostProcess&) = delete;

  pid_t pid() const { return pid_; }

  /// Processor time that its threads have used so far.
  std::chrono::microseconds processorTime() const;

  /// Resident memory in bytes.
  std::size_t residentMemory() const;

  /// Asks it to end, waits, and returns all processor time that it used.
  std::chrono::microseconds stop();

 private:
  pid_t pid_ = -1;
};

/// What makes a process a host: the environment to start it with. `libraryFolder` holds
/// libtarnixprobe.so.
std::map<std::string, std::string> probed(const std::string& libraryFolder);

}  // namespace tarnix::bench
