#include <gtest/gtest.h>
#include <sys/mount.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "companion/discovery/service_browser.h"
#include "tests/companion/program_run.h"
#include "tests/integration/end_to_end/applications.h"
#include "tests/integration/harness/host_process.h"
#include "tests/integration/harness/own_world.h"
#include "tests/integration/harness/wait_until.h"

/// Where an mDNS daemon runs, hosts announce themselves through it and are found through it.
namespace tarnix::integration {
namespace {

constexpr const char* busSocket = "/run/dbus/system_bus_socket";
constexpr const char* busAddress = "unix:path=/run/dbus/system_bus_socket";

/// A machine on which nothing runs.
class QuietMachine : public testing::Test {
 protected:
  void SetUp() override {
    if (!hasOwnWorld()) {
      GTEST_SKIP() << "daemons need namespaces of their own";
    }
    ASSERT_EQ(mount("tmpfs", "/run", "tmpfs", 0, nullptr), 0);
    std::filesystem::create_directories("/run/dbus");
  }
  void TearDown() override {
    if (hasOwnWorld()) {
      umount("/run");
    }
  }
};

class DaemonDiscovery : public QuietMachine {
 protected:
  void SetUp() override {
    QuietMachine::SetUp();
    if (!IsSkipped() && !HasFatalFailure()) {
      beginBus();
      beginDaemon();
    }
  }
  void TearDown() override {
    daemon_.reset();
    bus_.reset();
    QuietMachine::TearDown();
  }

  static HostOptions onTheBus() {
    HostOptions options;
    options.variables = {{"DBUS_SYSTEM_BUS_ADDRESS", busAddress}};
    return options;
  }

 private:
  void beginBus() {
    std::ofstream(folder_ / "bus.conf")
        << "<busconfig><type>system</type><listen>" << busAddress << "</listen>"
        << "<auth>EXTERNAL</auth><policy context=\"default\"><allow send_destination=\"*\"/>"
        << "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>";
    HostOptions unprobed;
    unprobed.isProbed = false;
    bus_.emplace(std::vector<std::string>{"/usr/bin/dbus-daemon", "--nofork",
                                          "--config-file=" + (folder_ / "bus.conf").string()},
                 unprobed);
    ASSERT_TRUE(waitUntil([] { return std::filesystem::exists(busSocket); }));
  }

  void beginDaemon() {
    std::ofstream(folder_ / "avahi.conf")
        << "[server]\nhost-name=tarnixtest\n[publish]\npublish-workstation=no\n";
    HostOptions options = onTheBus();
    options.isProbed = false;
    daemon_.emplace(std::vector<std::string>{"/usr/sbin/avahi-daemon", "--file",
                                             (folder_ / "avahi.conf").string(), "--no-drop-root",
                                             "--no-chroot", "--no-rlimits", "--no-proc-title"},
                    options);
    ASSERT_TRUE(waitUntil([&] {
      const auto lines = daemon_->errorLines();
      return std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        return line.starts_with("Server startup complete");
      });
    })) << testing::PrintToString(daemon_->errorLines());
  }

  companion::TemporaryFolder folder_;
  std::optional<HostProcess> bus_;
  std::optional<HostProcess> daemon_;
};

TEST_F(DaemonDiscovery, FindsWhatTheDaemonAnnounces) {
  HostProcess game(pentobi().commandLine, onTheBus());
  HostProcess editor(focuswriter().commandLine, onTheBus());
  const std::vector<std::uint16_t> ports = {game.port(), editor.port()};
  EXPECT_TRUE(waitUntil([&] {
    const auto services =
        companion::browseThroughDaemon(companion::deadlineIn(std::chrono::seconds(3)));
    return services && std::all_of(ports.begin(), ports.end(), [&](std::uint16_t port) {
             return std::any_of(services->begin(), services->end(),
                                [&](const auto& service) { return service.port == port; });
           });
  }));
}

TEST_F(DaemonDiscovery, NamesAppearInTheList) {
  HostProcess game(pentobi().commandLine, onTheBus());
  ASSERT_NE(game.port(), 0);
  const std::string entry =
      ",\"pid\":" + std::to_string(game.pid()) + ",\"port\":" + std::to_string(game.port()) + "}";
  companion::ProgramResult list;
  EXPECT_TRUE(waitUntil([&] {
    list = companion::runProgram({TARNIX_PROGRAM, "list", "--json"},
                                 {{{"DBUS_SYSTEM_BUS_ADDRESS", busAddress}}, std::nullopt});
    return list.output.find(entry) != std::string::npos &&
           list.output.find("\"name\":\"\"") == std::string::npos;
  })) << list.output;
}

TEST_F(QuietMachine, HasNoDaemonToAsk) {
  EXPECT_FALSE(companion::browseThroughDaemon(companion::deadlineIn(std::chrono::seconds(3))));
}

}  // namespace
}  // namespace tarnix::integration
