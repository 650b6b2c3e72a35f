#include <string>
#include <vector>

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;

class ProbeServerBackPressure : public ServerTest {
 protected:
  ProbeServerBackPressure() {
    startServer();
    companion_ = connectCompanion();
    companion_->isReading = false;
  }

  void send(CompanionMessageType type, int count = 1) {
    for (int sent = 0; sent < count; ++sent) {
      server_->send(message(type));
    }
    world_.settle();
  }

  void complete(std::size_t count) {
    companion_->completeSends(count);
    world_.settle();
  }

  std::shared_ptr<fakes::FakeConnection> companion_;
};

TEST_F(ProbeServerBackPressure, DropsWhatComesWhileSixtyFourAreOnTheirWay) {
  send(CompanionMessageType::eventLog, 65);
  EXPECT_EQ(companion_->outstandingSendCount(), 64U);
  EXPECT_FALSE(companion_->isCancelled);
}

TEST_F(ProbeServerBackPressure, StaysBoundedHoweverMuchIsSent) {
  send(CompanionMessageType::eventLog, 10'000);
  EXPECT_EQ(companion_->outstandingSendCount(), 64U);
}

TEST_F(ProbeServerBackPressure, LetsHeartbeatsPassAndCountsThem) {
  send(CompanionMessageType::eventLog, 64);
  send(CompanionMessageType::heartbeat);
  EXPECT_EQ(companion_->outstandingSendCount(), 65U);
  complete(1);
  send(CompanionMessageType::eventLog);
  EXPECT_EQ(companion_->outstandingSendCount(), 64U) << "of 65, one came back: still at the bound";
  complete(1);
  send(CompanionMessageType::eventLog);
  EXPECT_EQ(companion_->outstandingSendCount(), 64U) << "room for one";
}

TEST_F(ProbeServerBackPressure, LetsFullSyncsPass) {
  send(CompanionMessageType::eventLog, 64);
  send(CompanionMessageType::syncFull);
  EXPECT_EQ(companion_->outstandingSendCount(), 65U);
}

TEST_F(ProbeServerBackPressure, LetsNoOtherTypePass) {
  send(CompanionMessageType::eventLog, 64);
  for (const CompanionMessageType type : allCompanionMessageTypes()) {
    if (type != CompanionMessageType::heartbeat && type != CompanionMessageType::syncFull) {
      send(type);
      EXPECT_EQ(companion_->outstandingSendCount(), 64U) << rawValue(type);
    }
  }
}

TEST_F(ProbeServerBackPressure, GoesOnOnceTheCompanionReads) {
  send(CompanionMessageType::eventLog, 100);
  complete(64);
  send(CompanionMessageType::eventLog, 10);
  EXPECT_EQ(companion_->outstandingSendCount(), 10U);
}

TEST_F(ProbeServerBackPressure, StartsAfreshForTheNextCompanion) {
  send(CompanionMessageType::eventLog, 64);
  companion_->fail();
  world_.settle();
  const auto next = connectCompanion();
  next->isReading = false;
  companion_ = next;
  send(CompanionMessageType::eventLog, 100);
  EXPECT_EQ(next->outstandingSendCount(), 64U);
}

TEST_F(ProbeServerBackPressure, NeverCountsBelowZero) {
  // The completions of a lost connection come after its count was cleared.
  send(CompanionMessageType::eventLog, 30);
  companion_->cancel();
  world_.settle();
  companion_ = connectCompanion();
  companion_->isReading = false;
  send(CompanionMessageType::eventLog, 100);
  EXPECT_EQ(companion_->outstandingSendCount(), 64U)
      << "a count below zero would let more than 64 through";
}

}  // namespace
}  // namespace tarnix::tests
