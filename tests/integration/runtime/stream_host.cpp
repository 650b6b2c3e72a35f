// A process whose standard error is diverted, without a toolkit and a core: what the tests of the
// stream look at. Arguments: "plain" to leave the stream alone, or a file that gets what the
// observer is told; then what to do, one after the other:
//   write=TEXT     writes TEXT and a line feed      part=TEXT   without the line feed
//   lines=N        writes N numbered lines          threads=N   four threads write N lines each
//   outputs=N     writes N lines to standard output and to standard error at the same time
//   own=TEXT       a line of the probe's own        sleep=MS    does nothing for a while
//   close          closes descriptor 2              redirect=F  puts a file in its place
//   nonblocking    asks for writes that do not wait
//   child=SCRIPT   a shell, by fork and exec        spawn=SCRIPT  one by posix_spawn
//   forked=TEXT    a child without a program writes TEXT after a while and leaves by exit
//   wait           says on standard output whether `wait` knows of any child
//   exec=SCRIPT    becomes a shell                  late=TEXT   writes TEXT in an early exit
//   handler exit=N, quick_exit=N, _exit=N, return=N, kill=N  the ways out
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "probe/platform/diagnostics.h"
#include "probe/platform/standard_error.h"

namespace {

using namespace tarnix;

int observed = -1;
int ownLines = platform::standardErrorDescriptor;
std::string late;

void writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) {
      return;
    }
    text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
  }
}

void observe(std::string_view piece) { writeAll(observed, piece); }

void writeLines(const std::string& prefix, long count, int descriptor = STDERR_FILENO) {
  for (long index = 0; index < count; ++index) {
    const std::string line = prefix + std::to_string(index) + " of a host that writes a log\n";
    writeAll(descriptor, line);
  }
}

void writeToBothOutputs(long count) {
  std::thread other([count] { writeLines("output ", count, STDOUT_FILENO); });
  writeLines("error ", count);
  other.join();
}

void writeFromThreads(long count) {
  std::vector<std::thread> threads;
  for (int index = 0; index < 4; ++index) {
    threads.emplace_back(
        [index, count] { writeLines("thread " + std::to_string(index) + " ", count); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

std::array<char*, 4> shell(std::string& script) {
  static char name[] = "sh";
  static char option[] = "-c";
  return {name, option, script.data(), nullptr};
}

void startChild(std::string script) {
  if (::fork() == 0) {
    ::execv("/bin/sh", shell(script).data());
    ::_exit(127);
  }
}

void spawnChild(std::string script) {
  pid_t child = 0;
  ::posix_spawn(&child, "/bin/sh", nullptr, nullptr, shell(script).data(), environ);
}

void forkWriter(const std::string& text) {
  if (::fork() == 0) {
    ::usleep(200'000);
    writeAll(STDERR_FILENO, text + "\n");
    std::exit(0);
  }
}

void redirect(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
  ::dup2(file, STDERR_FILENO);
  ::close(file);
}

void sayWhetherThereAreChildren() {
  const pid_t child = ::waitpid(-1, nullptr, WNOHANG);
  std::printf("%s\n", child < 0 && errno == ECHILD ? "no children" : "children");
  std::fflush(stdout);
}

void perform(const std::string& action, const std::string& value) {
  const auto number = [&] { return std::stol(value); };
  if (action == "write") {
    writeAll(STDERR_FILENO, value + "\n");
  } else if (action == "part") {
    writeAll(STDERR_FILENO, value);
  } else if (action == "lines") {
    writeLines("line ", number());
  } else if (action == "threads") {
    writeFromThreads(number());
  } else if (action == "outputs") {
    writeToBothOutputs(number());
  } else if (action == "own") {
    platform::writeDescriptor(ownLines, "[TarnixProbe] " + value + "\n");
  } else if (action == "sleep") {
    ::usleep(static_cast<useconds_t>(number() * 1'000));
  } else if (action == "close") {
    ::close(STDERR_FILENO);
  } else if (action == "redirect") {
    redirect(value);
  } else if (action == "nonblocking") {
    ::fcntl(STDERR_FILENO, F_SETFL, O_NONBLOCK);
  } else if (action == "child") {
    startChild(value);
  } else if (action == "spawn") {
    spawnChild(value);
  } else if (action == "forked") {
    forkWriter(value);
  } else if (action == "wait") {
    sayWhetherThereAreChildren();
  } else if (action == "exec") {
    std::string script = value;
    ::execv("/bin/sh", shell(script).data());
  } else if (action == "exit") {
    std::exit(static_cast<int>(number()));
  } else if (action == "quick_exit") {
    std::quick_exit(static_cast<int>(number()));
  } else if (action == "_exit") {
    ::_exit(static_cast<int>(number()));
  } else if (action == "kill") {
    ::raise(static_cast<int>(number()));
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  for (int index = 2; index < argumentCount; ++index) {
    const std::string_view action(arguments[index]);
    if (action.starts_with("late=")) {
      late = action.substr(5);
      // Registered before the stream is diverted, so it runs after what the diversion registers.
      std::atexit([] { writeAll(STDERR_FILENO, late + "\n"); });
    }
  }
  const std::string_view output = argumentCount > 1 ? arguments[1] : "plain";
  if (output != "plain") {
    // Descriptor 2 may be free, and is not to be this one.
    const int opened = ::open(arguments[1], O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    observed = ::fcntl(opened, F_DUPFD_CLOEXEC, 100);
    ::close(opened);
    const std::optional<int> original = platform::divertStandardError(observe);
    if (!original) {
      std::puts("not diverted");
      std::fflush(stdout);
    }
    ownLines = original.value_or(ownLines);
  }
  int result = 0;
  for (int index = 2; index < argumentCount; ++index) {
    const std::string word(arguments[index]);
    const std::size_t equals = word.find('=');
    const std::string action = word.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
    if (action == "return") {
      result = std::stoi(value);
      break;
    }
    perform(action, value);
  }
  return result;
}
