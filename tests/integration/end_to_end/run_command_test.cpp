#include <gtest/gtest.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <regex>

#include "tests/companion/program_run.h"
#include "tests/integration/end_to_end/applications.h"
#include "tests/integration/end_to_end/screen_reading.h"
#include "tests/integration/harness/host_process.h"
#include "tests/integration/harness/wait_until.h"

/// `tarnix run`: what it starts must not notice, and whoever started it neither.
namespace tarnix::integration {
namespace {

using companion::ProgramResult;
using companion::runProgram;

std::vector<std::string> underTarnix(std::vector<std::string> commandLine,
                                     std::vector<std::string> options = {}) {
  std::vector<std::string> words = {TARNIX_PROGRAM, "run"};
  words.insert(words.end(), options.begin(), options.end());
  words.emplace_back("--");
  words.insert(words.end(), commandLine.begin(), commandLine.end());
  return words;
}

/// `tarnix run` beside the test; it brings the library itself.
HostOptions unprobed() {
  HostOptions options;
  options.isProbed = false;
  return options;
}

struct ReadyLine {
  std::string application;
  pid_t pid = 0;
  std::uint16_t port = 0;
};

std::optional<ReadyLine> readyLine(const HostProcess& host) {
  static const std::regex form(R"(tarnix: (.*) \(process (\d+)\) can be reached on port (\d+))");
  for (const std::string& line : host.errorLines()) {
    std::smatch match;
    if (std::regex_match(line, match, form)) {
      return ReadyLine{match[1], std::stoi(match[2]),
                       static_cast<std::uint16_t>(std::stoi(match[3]))};
    }
  }
  return std::nullopt;
}

ProgramResult runHeadless(const std::vector<std::string>& commandLine) {
  const companion::TemporaryFolder home;
  return runProgram(commandLine, {headlessVariables(home), std::nullopt});
}

TEST(RunCommand, TellsThePortInOneLine) {
  HostProcess tarnix(underTarnix(pentobi().commandLine), unprobed());
  const auto ready = waitUntil([&] { return readyLine(tarnix); });
  ASSERT_TRUE(ready);
  EXPECT_EQ(ready->application, "pentobi");
  EXPECT_EQ(ready->port, tarnix.port());
  EXPECT_TRUE(readScreen(ready->port));
  EXPECT_EQ(tarnix.output(), "");
}

TEST(RunCommand, FindsTheApplicationBehindAScript) {
  const std::string script = "/usr/games/pentobi & echo started; wait $!";
  HostProcess tarnix(underTarnix({"/bin/sh", "-c", script}), unprobed());
  const auto ready = waitUntil([&] { return readyLine(tarnix); });
  ASSERT_TRUE(ready);
  EXPECT_EQ(ready->application, "pentobi");
  EXPECT_EQ(ready->pid, tarnix.probedDescendant());
  EXPECT_TRUE(readScreen(ready->port));
}

TEST(RunCommand, FindsAnApplicationWhoseLauncherHasEnded) {
  const std::string script = "(/usr/games/pentobi &) ; sleep 60";
  HostProcess tarnix(underTarnix({"/bin/sh", "-c", script}), unprobed());
  EXPECT_TRUE(waitUntil([&] { return readyLine(tarnix); }));
}

TEST(RunCommand, EndsWithTheExitCodeOfTheApplication) {
  for (const int code : {0, 1, 7, 255}) {
    const auto application = qmlFile("quitting.qml", {"50", std::to_string(code)});
    EXPECT_EQ(runHeadless(underTarnix(application.commandLine)).exitCode(), code);
  }
}

TEST(RunCommand, LeavesTheStreamsOfTheProgramAlone) {
  const ProgramResult result =
      runHeadless(underTarnix({"/bin/sh", "-c", "echo out; echo err >&2; cat; exit 3"}));
  EXPECT_EQ(result.exitCode(), 3);
  EXPECT_EQ(result.output, "out\n");
  EXPECT_EQ(result.errors, "err\n");
}

TEST(RunCommand, EndsByTheSignalThatEndedTheProgram) {
  for (const int number : {SIGTERM, SIGKILL, SIGSEGV, SIGABRT, SIGHUP}) {
    const ProgramResult result =
        runHeadless(underTarnix({"/bin/sh", "-c", "kill -" + std::to_string(number) + " $$"}));
    ASSERT_TRUE(WIFSIGNALED(result.waitStatus)) << number;
    EXPECT_EQ(WTERMSIG(result.waitStatus), number);
  }
}

TEST(RunCommand, TellsApartWhyAProgramDidNotStart) {
  EXPECT_EQ(runHeadless(underTarnix({"no-such-program"})).exitCode(), 127);
  EXPECT_EQ(runHeadless(underTarnix({"/no/such/program"})).exitCode(), 127);
  EXPECT_EQ(runHeadless(underTarnix({"/etc/passwd"})).exitCode(), 126);
  EXPECT_EQ(runHeadless(underTarnix({"/usr"})).exitCode(), 126);
  const companion::TemporaryFolder folder;
  const std::string lonely = (folder / "tarnix").string();
  std::filesystem::copy_file(TARNIX_PROGRAM, lonely);
  EXPECT_EQ(runHeadless({lonely, "run", "true"}).exitCode(), 125);
}

TEST(RunCommand, SaysOnceThatNoApplicationShowedUpAndGoesOnWaiting) {
  const ProgramResult result =
      runHeadless(underTarnix({"sh", "-c", "sleep 1.5; exit 4"}, {"--timeout", "0.2"}));
  EXPECT_EQ(result.exitCode(), 4);
  EXPECT_EQ(result.errors,
            "tarnix: no Qt 6 application has shown up within 0.2 seconds; still waiting for the "
            "program to end\n");
}

TEST(RunCommand, TellsAnApplicationThatStillStartsFromNone) {
  const auto application = qmlFile("starting.qml", {"1500"});
  const ProgramResult result =
      runHeadless(underTarnix(application.commandLine, {"--timeout", "1"}));
  EXPECT_NE(result.errors.find(") has the probe, but cannot be reached after 1 seconds, as its "
                               "main loop is busy or not running"),
            std::string::npos)
      << result.errors;
}

/// Counts how often a signal reaches it, and says so when it has rested a while.
std::string counting(const std::string& name) {
  return "n=0; trap 'n=$((n+1))' " + name +
         "; echo waiting; while [ $n -eq 0 ]; do sleep 0.05; done; sleep 0.5; echo count $n";
}

TEST(RunCommand, PassesSignalsOn) {
  const std::vector<std::pair<const char*, int>> signals = {
      {"INT", SIGINT},   {"TERM", SIGTERM}, {"HUP", SIGHUP},    {"QUIT", SIGQUIT},
      {"USR1", SIGUSR1}, {"USR2", SIGUSR2}, {"WINCH", SIGWINCH}};
  for (const auto& [name, number] : signals) {
    HostProcess tarnix(underTarnix({"/bin/sh", "-c", counting(name)}), unprobed());
    ASSERT_TRUE(waitUntil([&] { return tarnix.output() == "waiting\n"; }));
    tarnix.signal(number);
    EXPECT_EQ(tarnix.waitForEnd(), 0) << name;
    EXPECT_TRUE(waitUntil([&] { return tarnix.output() == "waiting\ncount 1\n"; }))
        << name << tarnix.output();
  }
}

TEST(RunCommand, StopsAndGoesOnWithTheProgram) {
  HostProcess tarnix(underTarnix({"/bin/sh", "-c", "echo waiting; sleep 1; echo done"}),
                     unprobed());
  ASSERT_TRUE(waitUntil([&] { return tarnix.output() == "waiting\n"; }));
  tarnix.signal(SIGTSTP);
  int status = 0;
  ASSERT_EQ(waitpid(tarnix.pid(), &status, WUNTRACED), tarnix.pid());
  EXPECT_TRUE(WIFSTOPPED(status));
  tarnix.signal(SIGCONT);
  EXPECT_EQ(tarnix.waitForEnd(), 0);
  EXPECT_TRUE(waitUntil([&] { return tarnix.output() == "waiting\ndone\n"; })) << tarnix.output();
}

bool isStopped(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  std::string text;
  std::getline(file, text);
  return text.find(") T ") != std::string::npos;
}

TEST(RunCommand, IsNotStoppedWithAProgramThatSomebodyStopsAlone) {
  HostProcess tarnix(underTarnix({"/bin/sh", "-c", "echo $$; exec sleep 60"}), unprobed());
  ASSERT_TRUE(waitUntil([&] { return tarnix.output().ends_with('\n'); }));
  const pid_t program = std::stoi(tarnix.output());
  kill(program, SIGSTOP);
  ASSERT_TRUE(waitUntil([&] { return isStopped(program); }));
  EXPECT_FALSE(waitUntil([&] { return isStopped(tarnix.pid()); }, std::chrono::milliseconds(200)));
  kill(program, SIGCONT);
  kill(program, SIGTERM);
  EXPECT_EQ(tarnix.waitForEnd(), SIGTERM);
}

/// A terminal of its own, in which a program runs in the foreground.
class TerminalSession {
 public:
  explicit TerminalSession(const std::vector<std::string>& commandLine) {
    std::vector<char*> arguments;
    for (const std::string& word : commandLine) {
      arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
    if (pid_ == 0) {
      execv(arguments[0], arguments.data());
      _exit(127);
    }
  }
  ~TerminalSession() {
    close(terminal_);
    if (!end_) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
  }
  TerminalSession(const TerminalSession&) = delete;
  TerminalSession& operator=(const TerminalSession&) = delete;

  void type(char key) { EXPECT_EQ(write(terminal_, &key, 1), 1); }

  bool waitForText(const std::string& text) {
    std::array<char, 4096> block{};
    while (text_.find(text) == std::string::npos) {
      const ssize_t count = read(terminal_, block.data(), block.size());
      if (count <= 0) {
        return false;
      }
      text_.append(block.data(), static_cast<std::size_t>(count));
    }
    return true;
  }

  int waitForEnd() {
    int status = 0;
    waitpid(pid_, &status, 0);
    end_ = status;
    return status;
  }

  const std::string& text() const { return text_; }

 private:
  int terminal_ = -1;
  pid_t pid_ = -1;
  std::optional<int> end_;
  std::string text_;
};

TEST(RunCommand, DoesNotDoubleTheKeysOfATerminal) {
  TerminalSession session(underTarnix({"/bin/sh", "-c", counting("INT")}));
  ASSERT_TRUE(session.waitForText("waiting"));
  constexpr char controlC = '\x03';
  session.type(controlC);
  ASSERT_TRUE(session.waitForText("count")) << session.text();
  EXPECT_EQ(session.waitForEnd(), 0);
  EXPECT_NE(session.text().find("count 1"), std::string::npos) << session.text();
}

}  // namespace
}  // namespace tarnix::integration
