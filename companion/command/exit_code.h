#pragma once

namespace tarnix::companion {

/// How `tarnix` ends, for scripts. `tarnix run` ends as the application does, and with one of the
/// last three, which are those of env(1), when the application could not be started.
enum class ExitCode {
  success = 0,
  /// Something on this side failed, such as writing a file.
  failure = 1,
  usage = 2,
  noHost = 3,
  severalHosts = 4,
  /// Nothing listens, or the host ended the connection.
  connectionFailed = 5,
  noAnswer = 6,
  /// What listens does not talk like a probe of this version.
  notUnderstood = 7,
  /// The host answered, and the answer is no: nothing was found, or something is wrong.
  negative = 8,
  cannotRun = 125,
  notExecutable = 126,
  notFound = 127,
};

/// The same for people, at the end of `tarnix --help`.
inline constexpr const char* exitCodeHelp =
    "Exit codes:\n"
    "  0    it worked\n"
    "  1    something on this side failed, such as writing a file\n"
    "  2    wrong usage\n"
    "  3    no application with a probe was found, or none fits --pid or --name\n"
    "  4    several were found and none was chosen\n"
    "  5    the connection failed\n"
    "  6    no answer came in time\n"
    "  7    the answer was not understood\n"
    "  8    the answer is no: nothing was found, or the audit found errors\n"
    "`tarnix run` ends as the application does: with its exit code, or by the same signal. Where\n"
    "the application could not be started: 125 the probe was not found, 126 not executable,\n"
    "127 no such program.";

}  // namespace tarnix::companion
