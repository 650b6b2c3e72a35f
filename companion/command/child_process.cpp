#include "companion/command/child_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>

#include "companion/client/deadline.h"

namespace tarnix::companion {
namespace {

constexpr std::array passedOn = {SIGINT,  SIGTERM, SIGHUP,   SIGQUIT, SIGUSR1,
                                 SIGUSR2, SIGTSTP, SIGWINCH, SIGCONT};

std::vector<char*> pointers(const std::vector<std::string>& texts) {
  std::vector<char*> result;
  result.reserve(texts.size() + 1);
  for (const std::string& text : texts) {
    // exec(3) promises not to write to them.
    result.push_back(const_cast<char*>(text.c_str()));
  }
  result.push_back(nullptr);
  return result;
}

}  // namespace

ChildProcess::ChildProcess() {
  sigemptyset(&attended_);
  sigaddset(&attended_, SIGCHLD);
  for (const int signal : passedOn) {
    sigaddset(&attended_, signal);
  }
  sigprocmask(SIG_BLOCK, &attended_, &originalMask_);
  // A caller that ignores SIGCHLD would have the kernel throw the child's exit status away.
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigaction(SIGCHLD, &action, &originalChildAction_);
  // An application that a launcher leaves behind stays findable among our descendants.
  prctl(PR_SET_CHILD_SUBREAPER, 1);
}

ChildProcess::~ChildProcess() {
  sigaction(SIGCHLD, &originalChildAction_, nullptr);
  sigprocmask(SIG_SETMASK, &originalMask_, nullptr);
}

std::variant<pid_t, StartFailure> ChildProcess::start(const std::vector<std::string>& commandLine,
                                                      const std::vector<std::string>& environment) {
  const std::vector<char*> arguments = pointers(commandLine);
  const std::vector<char*> variables = pointers(environment);
  std::array<int, 2> execResult{};
  if (pipe2(execResult.data(), O_CLOEXEC) != 0) {
    return StartFailure{errno};
  }
  pid_ = fork();
  if (pid_ == 0) {
    sigaction(SIGCHLD, &originalChildAction_, nullptr);
    sigprocmask(SIG_SETMASK, &originalMask_, nullptr);
    execvpe(arguments[0], arguments.data(), variables.data());
    const int error = errno;
    const ssize_t ignored = write(execResult[1], &error, sizeof error);
    _exit(ignored == sizeof error ? 127 : 126);
  }
  const int forkError = errno;
  close(execResult[1]);
  int error = 0;
  // Closed without a word once the program runs.
  const bool hasFailed =
      pid_ < 0 || TEMP_FAILURE_RETRY(read(execResult[0], &error, sizeof error)) == sizeof error;
  close(execResult[0]);
  if (!hasFailed) {
    return pid_;
  }
  if (pid_ < 0) {
    return StartFailure{forkError};
  }
  TEMP_FAILURE_RETRY(waitpid(pid_, nullptr, 0));
  return StartFailure{error};
}

std::variant<std::monostate, ProcessEnd> ChildProcess::attend(int milliseconds) {
  const Deadline deadline = deadlineIn(std::chrono::milliseconds(milliseconds));
  while (true) {
    const auto end = reap();
    if (std::holds_alternative<ProcessEnd>(end)) {
      return end;
    }
    const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(timeUntil(deadline));
    constexpr long nanosecondsInSecond = 1'000'000'000;
    const timespec wait{left.count() / nanosecondsInSecond, left.count() % nanosecondsInSecond};
    siginfo_t signal{};
    const int number = milliseconds < 0 ? sigwaitinfo(&attended_, &signal)
                                        : sigtimedwait(&attended_, &signal, &wait);
    if (number > 0 && number != SIGCHLD) {
      passOn(signal);
      noteJobControl(number);
    }
    if (number < 0 && errno == EAGAIN) {
      return {};
    }
  }
}

void ChildProcess::passOn(const siginfo_t& signal) const {
  // What the terminal sends goes to the whole process group, and has mostly reached the child.
  const bool hasReachedChild = signal.si_code == SI_KERNEL && getpgid(pid_) == getpgrp();
  if (!hasReachedChild && signal.si_pid != pid_) {
    kill(pid_, signal.si_signo);
  }
}

void ChildProcess::noteJobControl(int signal) {
  if (signal == SIGTSTP) {
    isStopAsked_ = true;
    stopWithChild();
  } else if (signal == SIGCONT) {
    isStopAsked_ = false;
  }
}

void ChildProcess::stopWithChild() {
  if (!isStopAsked_ || !isChildStopped_) {
    return;
  }
  isStopAsked_ = false;
  isChildStopped_ = false;
  // The shell sees the job stopped only when all of it is. Being continued continues the child.
  raise(SIGSTOP);
  kill(pid_, SIGCONT);
}

std::variant<std::monostate, ProcessEnd> ChildProcess::reap() {
  constexpr int options = WNOHANG | WUNTRACED | WCONTINUED;
  int status = 0;
  for (pid_t pid = waitpid(-1, &status, options); pid > 0; pid = waitpid(-1, &status, options)) {
    if (pid != pid_) {
      continue;
    }
    if (WIFEXITED(status) || WIFSIGNALED(status)) {
      return ProcessEnd{status};
    }
    isChildStopped_ = WIFSTOPPED(status);
    // Somebody who stops the child alone, as a debugger does, also continues it alone: were we
    // stopped as well, nobody would wake us. These two, though, the terminal sends for the job.
    isStopAsked_ |= isChildStopped_ && (WSTOPSIG(status) == SIGTTIN || WSTOPSIG(status) == SIGTTOU);
    stopWithChild();
  }
  return {};
}

int ChildProcess::endAlike(ProcessEnd end) {
  if (WIFEXITED(end.waitStatus)) {
    return WEXITSTATUS(end.waitStatus);
  }
  const int signal = WTERMSIG(end.waitStatus);
  // One memory image is enough, and it is the application's.
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  sigaction(signal, &action, nullptr);
  sigset_t only;
  sigemptyset(&only);
  sigaddset(&only, signal);
  sigprocmask(SIG_UNBLOCK, &only, nullptr);
  raise(signal);
  constexpr int signalBase = 128;
  return signalBase + signal;
}

}  // namespace tarnix::companion
