#pragma once

#include <signal.h>
#include <sys/types.h>

#include <string>
#include <variant>
#include <vector>

namespace tarnix::companion {

/// How a process ended, as wait(2) tells it.
struct ProcessEnd {
  int waitStatus = 0;
};

/// Why a program could not be started: an errno of exec(3) or fork(2).
struct StartFailure {
  int error = 0;
};

/// A child in our own process group, so that a terminal's keys and job control reach both alike.
/// While it lives, the signals that are passed on to it are blocked here and taken one by one.
/// One instance in a process, on its only thread.
class ChildProcess {
 public:
  ChildProcess();
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Looks for the program as a shell does. The child gets the signal mask and the dispositions
  /// that this process was started with, and `environment` in place of ours.
  std::variant<pid_t, StartFailure> start(const std::vector<std::string>& commandLine,
                                          const std::vector<std::string>& environment);

  /// Passes signals on for up to `milliseconds`, or without limit when negative, and ends earlier
  /// when the child does. Where the job as a whole is stopped, stops this process with the child.
  /// Descendants whose parents ended become our children and are waited for here.
  std::variant<std::monostate, ProcessEnd> attend(int milliseconds);

  /// Ends this process the way `end` says: with the same exit code, or by the same signal. Returns
  /// 128 plus the signal where that signal does not end a process like this.
  int endAlike(ProcessEnd end);

 private:
  void passOn(const siginfo_t& signal) const;
  /// Remembers whether the job has been asked to stop.
  void noteJobControl(int signal);
  /// Once the job has been asked to stop and the child has done so, in whichever order.
  void stopWithChild();
  std::variant<std::monostate, ProcessEnd> reap();

  pid_t pid_ = 0;
  bool isStopAsked_ = false;
  bool isChildStopped_ = false;
  sigset_t originalMask_{};
  sigset_t attended_{};
  struct sigaction originalChildAction_ {};
};

}  // namespace tarnix::companion
