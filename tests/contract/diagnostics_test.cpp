#include "probe/platform/diagnostics.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

#include "platforms/linux/descriptor.h"

namespace tarnix::platform {
namespace {

using linux_platform::Descriptor;

/// Standard error replaced for as long as this lives by a socket that keeps writes apart.
class StandardErrorTap {
 public:
  StandardErrorTap() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()), 0);
    reader_ = Descriptor(ends[0]);
    const Descriptor writer(ends[1]);
    saved_ = Descriptor(dup(STDERR_FILENO));
    dup2(writer.get(), STDERR_FILENO);
  }
  ~StandardErrorTap() { dup2(saved_.get(), STDERR_FILENO); }

  /// What the next single write wrote; empty when there is none.
  std::string nextWrite() {
    std::array<char, 8192> buffer{};
    const ssize_t size = recv(reader_.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    return size <= 0 ? std::string() : std::string(buffer.data(), static_cast<std::size_t>(size));
  }

 private:
  Descriptor reader_;
  Descriptor saved_;
};

TEST(DiagnosticsTest, WritesTextUnchangedInOneWrite) {
  const std::string text = "[TarnixProbe] one \xE2\x80\x94 two\nthree\n";
  StandardErrorTap tap;
  writeStandardError(text);
  EXPECT_EQ(tap.nextWrite(), text);
  EXPECT_EQ(tap.nextWrite(), "");
}

TEST(DiagnosticsTest, WritesPastTheHostsOwnBuffers) {
  StandardErrorTap tap;
  setvbuf(stderr, nullptr, _IOFBF, 4096);
  std::fputs("buffered", stderr);
  writeStandardError("direct");
  EXPECT_EQ(tap.nextWrite(), "direct");
  std::fflush(stderr);
  EXPECT_EQ(tap.nextWrite(), "buffered");
  setvbuf(stderr, nullptr, _IONBF, 0);
}

TEST(DiagnosticsTest, LeavesTheErrorNumberOfTheHostAlone) {
  StandardErrorTap tap;
  const Descriptor saved(dup(STDERR_FILENO));
  close(STDERR_FILENO);
  errno = EDOM;
  writeStandardError("nobody reads this");
  writeSystemLog("[TarnixProbe] a line of the project's own tests");
  EXPECT_EQ(errno, EDOM);
  dup2(saved.get(), STDERR_FILENO);
}

/// Runs `body` in a child with an empty /run and /dev of its own; it returns what went wrong.
/// Returns whether the test can be run here at all.
bool runWithOwnLogs(const std::function<const char*()>& body) {
  const pid_t child = fork();
  if (child == 0) {
    if (unshare(CLONE_NEWNS) != 0 ||
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", "/run", "tmpfs", 0, nullptr) != 0 ||
        mount("none", "/dev", "tmpfs", 0, nullptr) != 0) {
      _exit(77);
    }
    const char* const problem = body();
    if (problem != nullptr) {
      std::printf("%s\n", problem);
      std::fflush(stdout);
    }
    _exit(problem == nullptr ? 0 : 1);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_NE(WEXITSTATUS(status), 1);
  return WEXITSTATUS(status) != 77;
}

Descriptor bindLog(const char* path) {
  Descriptor log(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path, sizeof(address.sun_path) - 1);
  if (bind(log.get(), static_cast<sockaddr*>(static_cast<void*>(&address)), sizeof(address)) != 0) {
    log.close();
  }
  return log;
}

std::string datagram(const Descriptor& log) {
  std::array<char, 8192> buffer{};
  const ssize_t size = recv(log.get(), buffer.data(), buffer.size(), 0);
  return size <= 0 ? std::string() : std::string(buffer.data(), static_cast<std::size_t>(size));
}

TEST(DiagnosticsTest, WritesToTheJournalWhereItRuns) {
  const bool ran = runWithOwnLogs([]() -> const char* {
    mkdir("/run/systemd", 0755);
    mkdir("/run/systemd/journal", 0755);
    const Descriptor journal = bindLog("/run/systemd/journal/socket");
    const Descriptor syslog = bindLog("/dev/log");
    writeSystemLog("[TarnixProbe] two\nlines");
    const std::string entry = datagram(journal);
    const std::string message("MESSAGE\n\x17\0\0\0\0\0\0\0[TarnixProbe] two\nlines\n", 40);
    if (entry.find(message) == std::string::npos) {
      return "the journal's entry does not hold the message";
    }
    if (entry.find("PRIORITY=6\n") == std::string::npos ||
        entry.find("SYSLOG_IDENTIFIER=") == std::string::npos) {
      return "the journal's entry does not say whose it is";
    }
    return datagram(syslog).empty() ? nullptr : "syslog got the line too";
  });
  if (!ran) {
    GTEST_SKIP() << "needs the right to make a mount namespace";
  }
}

TEST(DiagnosticsTest, WritesToSyslogWhereThereIsNoJournal) {
  const bool ran = runWithOwnLogs([]() -> const char* {
    const Descriptor syslog = bindLog("/dev/log");
    writeSystemLog("[TarnixProbe] a line");
    const std::string entry = datagram(syslog);
    const std::string end = "[" + std::to_string(getpid()) + "]: [TarnixProbe] a line";
    if (entry.substr(0, 4) != "<14>") {
      return "the priority is missing";
    }
    return entry.ends_with(end) ? nullptr : "the line is missing";
  });
  if (!ran) {
    GTEST_SKIP() << "needs the right to make a mount namespace";
  }
}

TEST(DiagnosticsTest, NeverWaitsForALogThatNobodyReads) {
  const bool ran = runWithOwnLogs([]() -> const char* {
    const Descriptor syslog = bindLog("/dev/log");
    alarm(20);
    for (int line = 0; line < 10'000; ++line) {
      writeSystemLog("[TarnixProbe] a line");
    }
    return nullptr;
  });
  if (!ran) {
    GTEST_SKIP() << "needs the right to make a mount namespace";
  }
}

}  // namespace
}  // namespace tarnix::platform
