#include "platforms/linux/standard_error/keeper_process.h"

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <utility>

#include "platforms/linux/descriptor.h"
#include "platforms/linux/detached_process.h"
#include "platforms/linux/fork_guard.h"
#include "platforms/linux/module_path.h"

namespace tarnix::linux_platform {

namespace {

constexpr const char* keeperProgram = "tarnixprobe-keeper";

}  // namespace

void startKeeper(int readEnd, int destination) {
  // Its other end closes with this process, and when this process executes another program.
  int life[2] = {-1, -1};
  if (::pipe2(life, O_CLOEXEC) != 0) {
    return;
  }
  const Descriptor watched(life[0]);
  Descriptor held(life[1]);
  const std::string path = modulePath(keeperProgram);
  if (startDetachedProcess(path.c_str(), std::to_string(::getpid()).c_str(),
                           {readEnd, destination, watched.get()})) {
    fork_guard::install();
    fork_guard::closeInChild(held.release());
  }
}

}  // namespace tarnix::linux_platform
