#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <thread>
#include <vector>

#include "companion/client/companion_client.h"
#include "companion/discovery/host_target.h"
#include "companion/discovery/service_browser.h"
#include "tests/integration/end_to_end/applications.h"
#include "tests/integration/end_to_end/screen_reading.h"
#include "tests/integration/harness/host_process.h"
#include "tests/integration/harness/raw_companion.h"
#include "tests/integration/harness/wait_until.h"

/// Several companions at one host, and several hosts.
namespace tarnix::integration {
namespace {

using Type = CompanionMessageType;
using companion::CompanionClient;

TEST(Companions, TheNewestReplacesTheOneBefore) {
  HostProcess host(pentobi().commandLine);
  auto first = RawCompanion::synced(host.port());
  ASSERT_TRUE(first);
  auto second =
      CompanionClient::connect({"127.0.0.1", host.port()}, companion::deadlineIn(patience));
  ASSERT_TRUE(second) << second.error().message;
  EXPECT_TRUE(first->waitForEnd());
  const auto answer = second->request(companion::makeCommand(Type::commandScreenHTML),
                                      Type::responseScreenHTML, companion::deadlineIn(patience));
  EXPECT_TRUE(answer) << answer.error().message;
}

TEST(Companions, TenInATightLoopLeaveTheHostServing) {
  HostProcess host(pentobi().commandLine);
  const std::uint16_t port = host.port();
  {
    std::vector<RawCompanion> companions;
    for (int index = 0; index < 10; ++index) {
      companions.emplace_back(port);
      EXPECT_TRUE(companions.back().isConnected());
    }
  }
  for (int index = 0; index < 10; ++index) {
    RawCompanion{port};
  }
  EXPECT_TRUE(readScreen(port));
  EXPECT_TRUE(host.isAlive());
}

TEST(Companions, TwoHostsAreBothFoundAndServed) {
  HostProcess game(pentobi().commandLine);
  HostProcess editor(focuswriter().commandLine);
  ASSERT_NE(game.port(), 0);
  ASSERT_NE(editor.port(), 0);
  constexpr std::chrono::milliseconds announcementTime{1500};
  const auto hasBoth = [&](const std::vector<companion::HostTarget>& targets) {
    int found = 0;
    for (const companion::HostTarget& target : targets) {
      found +=
          target == companion::HostTarget{"pentobi", target.serviceName, game.pid(), game.port()};
      found += target == companion::HostTarget{"focuswriter", target.serviceName, editor.pid(),
                                               editor.port()};
    }
    return found == 2;
  };
  EXPECT_TRUE(hasBoth(companion::discoverTargets(companion::deadlineIn(announcementTime))));
  EXPECT_TRUE(readScreen(game.port()));
  EXPECT_TRUE(readScreen(editor.port()));
}

TEST(Companions, HostsAreFoundByTheirAnnouncementsAlone) {
  HostProcess game(pentobi().commandLine);
  HostProcess editor(focuswriter().commandLine);
  const std::vector<std::uint16_t> ports = {game.port(), editor.port()};
  // The process that started second has to find another name first.
  EXPECT_TRUE(waitUntil([&] {
    const auto services = companion::browseServices(companion::deadlineIn(std::chrono::seconds(2)));
    return std::all_of(ports.begin(), ports.end(), [&](std::uint16_t port) {
      return std::any_of(services.begin(), services.end(),
                         [&](const auto& service) { return service.port == port; });
    });
  }));
}

}  // namespace
}  // namespace tarnix::integration
