#include "companion/discovery/process_scanner.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/companion/temporary_folder.h"

namespace tarnix::companion {
namespace {

namespace fs = std::filesystem;

/// A folder that looks like /proc, as far as it is read.
class SampleProc {
 public:
  SampleProc() {
    fs::create_directories(folder_ / "self/net");
    fs::create_directories(folder_ / "self/ns");
    fs::create_symlink("net:[1]", folder_ / "self/ns/net");
  }

  const fs::path& folder() const { return folder_.path(); }

  void addProcess(int pid, int parent, const std::string& executable, bool isProbed,
                  const std::vector<int>& inodes, const std::string& network = "net:[1]") {
    const fs::path process = folder_ / std::to_string(pid);
    fs::create_directories(process / "fd");
    fs::create_directories(process / "ns");
    fs::create_symlink(network, process / "ns/net");
    fs::create_symlink(executable, process / "exe");
    write(process / "maps", "1-2 r-xp 0 0:0 1 /lib/libc.so.6\n" +
                                std::string(isProbed ? "2-3 r-xp 0 0:0 2 "
                                                       "/opt/lib/libtarnixprobe-core.so\n"
                                                     : ""));
    write(process / "stat", std::to_string(pid) + " (name) S " + std::to_string(parent) +
                                " 1 1 0 -1 0 0 0 0 0 0 0 0 0 20 0 1 0 55 0 0");
    int descriptor = 0;
    fs::create_symlink("/dev/null", process / "fd" / std::to_string(descriptor));
    for (const int inode : inodes) {
      fs::create_symlink("socket:[" + std::to_string(inode) + "]",
                         process / "fd" / std::to_string(++descriptor));
    }
  }

  void addListener(const char* table, const std::string& address, int inode) {
    std::ofstream(folder_ / "self/net" / table, std::ios::app)
        << " 0: " << address << " 0:0000 0A 0:0 00:0 0 1000 0 " << inode << " 1 0\n";
  }

 private:
  static void write(const fs::path& file, const std::string& text) { std::ofstream(file) << text; }

  TemporaryFolder folder_;
};

constexpr const char* ipv6Loopback = "00000000000000000000000001000000";

TEST(ProcessScanner, FindsProbedProcessesAndTheirPort) {
  SampleProc proc;
  proc.addProcess(100, 1, "/usr/games/pentobi", true, {900, 901, 902});
  proc.addProcess(101, 1, "/usr/bin/other", false, {903});
  proc.addListener("tcp", "0100007F:9C41", 900);
  proc.addListener("tcp6", std::string(ipv6Loopback) + ":9C41", 901);
  // The application's own listener.
  proc.addListener("tcp", "0100007F:1F90", 902);
  proc.addListener("tcp", "0100007F:2222", 903);

  const auto found = ProcessScanner(proc.folder()).scan();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].pid, 100);
  EXPECT_EQ(found[0].application, "pentobi");
  EXPECT_EQ(found[0].ports, (std::vector<std::uint16_t>{40'001}));
}

TEST(ProcessScanner, TakesWhatThereIsOnAMachineWithoutIPv6) {
  SampleProc proc;
  proc.addProcess(100, 1, "/usr/games/pentobi (deleted)", true, {900});
  proc.addListener("tcp", "0100007F:9C41", 900);
  const auto found = ProcessScanner(proc.folder()).scan();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].application, "pentobi");
  EXPECT_EQ(found[0].ports, (std::vector<std::uint16_t>{40'001}));
}

TEST(ProcessScanner, ReportsAProbeThatDoesNotListenYet) {
  SampleProc proc;
  proc.addProcess(100, 1, "/usr/games/pentobi", true, {});
  const auto found = ProcessScanner(proc.folder()).scan();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_TRUE(found[0].ports.empty());
}

TEST(ProcessScanner, PassesOverOtherNetworks) {
  SampleProc proc;
  proc.addProcess(100, 1, "/usr/games/pentobi", true, {900}, "net:[2]");
  proc.addListener("tcp", "0100007F:9C41", 900);
  EXPECT_TRUE(ProcessScanner(proc.folder()).scan().empty());
}

TEST(ProcessScanner, PassesOverWhatCannotBeRead) {
  SampleProc proc;
  fs::create_directories(proc.folder() / "77");
  fs::create_directories(proc.folder() / "notaprocess");
  EXPECT_TRUE(ProcessScanner(proc.folder()).scan().empty());
  EXPECT_TRUE(ProcessScanner("/nowhere").scan().empty());
}

TEST(ProcessScanner, KnowsAFamily) {
  SampleProc proc;
  proc.addProcess(100, 1, "/bin/sh", false, {});
  proc.addProcess(101, 100, "/bin/sh", false, {});
  proc.addProcess(99, 101, "/usr/games/pentobi", false, {});
  proc.addProcess(102, 1, "/bin/sh", false, {});
  EXPECT_EQ(ProcessScanner(proc.folder()).familyOf(100), (std::vector<pid_t>{100, 101, 99}));
}

TEST(ProcessScanner, ReadsTheRealProc) {
  const ProcessScanner scanner;
  EXPECT_TRUE(scanner.inspect({getpid()}).empty());
  const auto family = scanner.familyOf(getppid());
  EXPECT_NE(std::find(family.begin(), family.end(), getpid()), family.end());
}

}  // namespace
}  // namespace tarnix::companion
