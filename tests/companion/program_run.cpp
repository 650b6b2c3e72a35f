#include "tests/companion/program_run.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <utility>

#include "tests/companion/socket_descriptor.h"

namespace tarnix::companion {
namespace {

constexpr std::chrono::seconds patience{60};

struct Channel {
  SocketDescriptor ours;
  SocketDescriptor programs;
};

Channel makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    abort();
  }
  return {SocketDescriptor(ends[0]), SocketDescriptor(ends[1])};
}

Channel makeTerminal(unsigned short columns) {
  winsize size{};
  size.ws_col = columns;
  size.ws_row = 24;
  int ours = -1;
  int programs = -1;
  if (openpty(&ours, &programs, nullptr, nullptr, &size) != 0) {
    abort();
  }
  fcntl(ours, F_SETFD, FD_CLOEXEC);
  return {SocketDescriptor(ours), SocketDescriptor(programs)};
}

/// Reads what has come; false at the end.
bool readSome(int descriptor, std::string& text) {
  std::array<char, 65'536> block{};
  const ssize_t count = read(descriptor, block.data(), block.size());
  if (count > 0) {
    text.append(block.data(), static_cast<std::size_t>(count));
  }
  return count > 0;
}

void readUntilEnd(std::array<pollfd, 2>& streams, ProgramResult& result, pid_t program) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (streams[0].fd >= 0 || streams[1].fd >= 0) {
    constexpr int sliceMilliseconds = 100;
    poll(streams.data(), streams.size(), sliceMilliseconds);
    std::array<std::string*, 2> texts = {&result.output, &result.errors};
    for (std::size_t index = 0; index < streams.size(); ++index) {
      if (streams[index].fd >= 0 && streams[index].revents != 0 &&
          !readSome(streams[index].fd, *texts[index])) {
        streams[index].fd = -1;
      }
    }
    if (std::chrono::steady_clock::now() > deadline) {
      kill(program, SIGKILL);
      return;
    }
  }
}

}  // namespace

int ProgramResult::exitCode() const { return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : -1; }

ProgramResult runProgram(const std::vector<std::string>& commandLine,
                         const ProgramOptions& options) {
  Channel output = options.terminalColumns ? makeTerminal(*options.terminalColumns) : makePipe();
  Channel errors = options.terminalColumns ? Channel{} : makePipe();
  const int programsErrors =
      options.terminalColumns ? output.programs.get() : errors.programs.get();
  const pid_t program =
      spawn(commandLine, options.environment, {-1, output.programs.get(), programsErrors});
  ProgramResult result;
  if (program < 0) {
    result.errors = "not started";
    return result;
  }
  // An end of ours kept open would keep the reader waiting.
  { const SocketDescriptor closed = std::move(output.programs); }
  { const SocketDescriptor closed = std::move(errors.programs); }
  std::array<pollfd, 2> streams = {pollfd{output.ours.get(), POLLIN, 0},
                                   pollfd{errors.ours.get(), POLLIN, 0}};
  readUntilEnd(streams, result, program);
  waitpid(program, &result.waitStatus, 0);
  return result;
}

}  // namespace tarnix::companion
