#include "platforms/linux/detached_process.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>

namespace tarnix::linux_platform {

namespace {

constexpr std::size_t stackSize = 65'536;

/// Shared by the three processes: a child that is made this way runs in the memory of its parent,
/// which waits until it has executed a program or ended. So children may do nothing but what a
/// signal handler may.
struct Launch {
  const char* path;
  const char* argument;
  std::array<int, 3> descriptors;
  std::byte* stacks;
  bool isStarted;
};

int startShared(int (*entry)(void*), std::byte* stack, Launch& launch) {
  // Without a signal number there is no signal at the child's end, and `wait` passes it over.
  constexpr int flags = CLONE_VM | CLONE_VFORK;
  return ::clone(entry, stack + stackSize, flags, &launch);
}

void resetSignals() {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  for (int signal = 1; signal < NSIG; ++signal) {
    ::sigaction(signal, &action, nullptr);
  }
  sigset_t none{};
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

void arrangeDescriptors(const std::array<int, 3>& descriptors) {
  // First out of the way of each other.
  std::array<int, 3> aside{};
  for (std::size_t index = 0; index < aside.size(); ++index) {
    aside[index] = ::fcntl(descriptors[index], F_DUPFD, 3);
  }
  for (std::size_t index = 0; index < aside.size(); ++index) {
    ::dup2(aside[index], static_cast<int>(index));
  }
  if (::syscall(SYS_close_range, 3U, UINT_MAX, 0U) != 0) {
    // Systems before 2020. A host that has more open keeps some of them alive a little longer.
    for (int descriptor = 3; descriptor < 4'096; ++descriptor) {
      ::close(descriptor);
    }
  }
}

/// The program-to-be.
int runProgram(void* argument) {
  Launch& launch = *static_cast<Launch*>(argument);
  ::setsid();
  arrangeDescriptors(launch.descriptors);
  static_cast<void>(!::chdir("/"));
  resetSignals();
  char* const arguments[] = {const_cast<char*>(launch.path), const_cast<char*>(launch.argument),
                             nullptr};
  char* const environment[] = {nullptr};
  launch.isStarted = true;
  ::execve(launch.path, arguments, environment);
  launch.isStarted = false;
  ::_exit(127);
}

/// Between the host and the program, so that the program is nobody's child once this has ended.
int runIntermediate(void* argument) {
  Launch& launch = *static_cast<Launch*>(argument);
  startShared(runProgram, launch.stacks + stackSize, launch);
  ::_exit(0);
}

}  // namespace

bool startDetachedProcess(const char* path, const char* argument,
                          const std::array<int, 3>& descriptors) {
  const int savedError = errno;
  void* const stacks = ::mmap(nullptr, 2 * stackSize, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
  if (stacks == MAP_FAILED) {
    return false;
  }
  // No handler of the host's may run in a child that shares its memory.
  sigset_t all{};
  sigset_t previous{};
  sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &previous);
  Launch launch{path, argument, descriptors, static_cast<std::byte*>(stacks), false};
  const int child = startShared(runIntermediate, launch.stacks, launch);
  while (child > 0 && ::waitpid(child, nullptr, static_cast<int>(__WCLONE)) < 0 && errno == EINTR) {
  }
  ::pthread_sigmask(SIG_SETMASK, &previous, nullptr);
  ::munmap(stacks, 2 * stackSize);
  errno = savedError;
  return launch.isStarted;
}

}  // namespace tarnix::linux_platform
