#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "tests/integration/end_to_end/applications.h"
#include "tests/integration/harness/host_process.h"
#include "tests/integration/harness/raw_companion.h"
#include "tests/integration/harness/wait_until.h"

/// What a host leaves behind while it starts: its lines and its marker.
namespace tarnix::integration {
namespace {

constexpr const char* marker = "/tmp/tarnprobe_ready";

std::vector<std::string> probeLines(const HostProcess& host) {
  std::vector<std::string> lines = host.errorLines();
  std::erase_if(lines, [](const std::string& line) { return !line.starts_with("[TarnixProbe] "); });
  return lines;
}

/// Where each of `expected` stands in `lines`, looked for behind the one before; fails otherwise.
void expectInOrder(const std::vector<std::string>& lines,
                   const std::vector<std::string>& expected) {
  auto position = lines.begin();
  for (const std::string& line : expected) {
    position = std::find(position, lines.end(), line);
    ASSERT_NE(position, lines.end()) << "missing in its place: " << line << "\n"
                                     << testing::PrintToString(lines);
    ++position;
  }
}

TEST(StartUp, WritesItsLinesWordForWord) {
  HostProcess host(pentobi().commandLine);
  ASSERT_NE(host.port(), 0);
  ASSERT_TRUE(host.waitForErrorLine("[TarnixProbe] Server started for io.sourceforge.pentobi"));
  ASSERT_TRUE(host.waitForErrorLine("[TarnixProbe] Listener ready"));
  std::vector<std::string> lines = probeLines(host);
  const std::vector<std::string> loading = {
      "[TarnixProbe] Bootstrap fired (C constructor)",
      "[TarnixProbe] About to call Swift bootstrap (sync from +load)",
      "[TarnixProbe] Swift entry reached", "[TarnixProbe] Injected into pentobi",
      "[TarnixProbe] Swift bootstrap returned (sync from +load)."};
  ASSERT_GE(lines.size(), loading.size());
  EXPECT_TRUE(std::equal(loading.begin(), loading.end(), lines.begin()))
      << testing::PrintToString(lines);
  expectInOrder(lines, {"[TarnixProbe] About to call Swift bootstrap (UIApplication launch)",
                        "[TarnixProbe] Swift entry reached",
                        "[TarnixProbe] Injected into io.sourceforge.pentobi",
                        "[TarnixProbe] Swift bootstrap returned (UIApplication launch)."});
  const auto started = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.starts_with("[TarnixProbe] Bonjour listener started as \"") &&
           line.ends_with("\" on _tarnix._tcp");
  });
  ASSERT_NE(started, lines.end());
  expectInOrder({started, lines.end()},
                {"[TarnixProbe] Server started for pentobi",
                 "[TarnixProbe] Server started for io.sourceforge.pentobi"});
  for (const char* once : {"[TarnixProbe] Listener ready", "[TarnixProbe] Swift entry reached"}) {
    const auto count = std::count(lines.begin(), lines.end(), once);
    EXPECT_EQ(count, once == std::string("[TarnixProbe] Listener ready") ? 1 : 2) << once;
  }
}

TEST(StartUp, LogsAConnectionsLife) {
  HostProcess host(focuswriter().commandLine);
  const std::uint16_t port = host.port();
  ASSERT_TRUE(host.waitForErrorLine("[TarnixProbe] Listener ready"));
  {
    RawCompanion companion(port);
    ASSERT_TRUE(companion.receive());
  }
  ASSERT_TRUE(host.waitForErrorLine("[TarnixProbe] Connection lost"));
  expectInOrder(probeLines(host), {"[TarnixProbe] New connection received",
                                   "[TarnixProbe] Connection ready — sending full sync",
                                   "[TarnixProbe] Connection lost"});
}

TEST(StartUp, LeavesAFreshMarker) {
  struct stat before {};
  const bool existed = lstat(marker, &before) == 0;
  HostProcess host(pentobi().commandLine);
  ASSERT_TRUE(host.waitForErrorLine("[TarnixProbe] Listener ready"));
  struct stat after {};
  ASSERT_TRUE(waitUntil([&] {
    return lstat(marker, &after) == 0 &&
           (!existed || after.st_mtim.tv_sec != before.st_mtim.tv_sec ||
            after.st_mtim.tv_nsec != before.st_mtim.tv_nsec);
  }));
  EXPECT_TRUE(S_ISREG(after.st_mode));
  std::ifstream file(marker, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "ready");
}

TEST(StartUp, IsInertInAShell) {
  HostProcess shell({"/bin/sh", "-c", "echo out; echo err >&2; exit 3"});
  const auto end = shell.waitForEnd();
  ASSERT_TRUE(end);
  EXPECT_EQ(*end, 3 << 8);
  EXPECT_TRUE(waitUntil([&] { return shell.output() == "out\n"; })) << shell.output();
  EXPECT_TRUE(waitUntil([&] { return shell.errorLines() == std::vector<std::string>{"err"}; }));
}

}  // namespace
}  // namespace tarnix::integration
