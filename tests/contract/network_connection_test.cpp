#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "probe/platform/connection.h"
#include "tests/contract/events.h"
#include "tests/contract/fake_network_world.h"
#include "tests/contract/linux_network_world.h"

namespace tarnix::contract {
namespace {

using platform::Connection;
using platform::ConnectionState;
using platform::Listener;
using platform::NetworkError;

/// Whether this thread is inside a call to the code under test.
thread_local bool isInsideCall = false;

void call(const std::function<void()>& operation) {
  isInsideCall = true;
  operation();
  isInsideCall = false;
}

template <class World>
class NetworkConnectionTest : public testing::Test {
 protected:
  void SetUp() override {
    world.isOnQueue();
    listener = world.network().makeListener({}).listener;
    ASSERT_NE(listener, nullptr);
    listener->setStateHandler([](platform::ListenerState) {});
    listener->setNewConnectionHandler([this](std::shared_ptr<Connection> incoming) {
      const std::lock_guard lock(mutex);
      connection = std::move(incoming);
    });
    world.start(*listener);
    world.settle();
    world.peerConnects(*listener);
    ASSERT_TRUE(world.pumpUntil([this] {
      const std::lock_guard lock(mutex);
      return connection != nullptr;
    }));
    connection->setStateHandler([this](ConnectionState state) {
      note(state == ConnectionState::ready    ? "ready"
           : state == ConnectionState::failed ? "failed"
                                              : "cancelled");
    });
  }

  void TearDown() override {
    // Handlers of a real network must not outlive the test that they write into.
    if (connection) {
      connection->cancel();
    }
    listener.reset();
    world.settle();
  }

  void start() {
    call([&] { world.start(*connection); });
    ASSERT_TRUE(world.pumpUntil([this] { return events.has("ready"); }));
  }

  void send(std::string bytes) {
    call([&] {
      connection->send(std::move(bytes), [this](std::optional<NetworkError> error) {
        note(error ? "send failed" : "sent");
      });
    });
  }

  void receive() {
    call([&] {
      connection->receive([this](std::string bytes, std::optional<NetworkError> error) {
        received += bytes;
        // Read by the test's thread once it has seen the event.
        note(error ? "receive failed" : "received");
      });
    });
  }

  void note(const std::string& event) {
    wasInsideCall = wasInsideCall || isInsideCall;
    wasOffQueue = wasOffQueue || !world.isOnQueue();
    events.add(event);
  }

  bool waitFor(const std::string& event, std::size_t count = 1) {
    return world.pumpUntil([&] { return events.count(event) >= count; });
  }

  World world;
  std::unique_ptr<Listener> listener;
  std::mutex mutex;
  std::shared_ptr<Connection> connection;
  std::string received;
  Events events;
  std::atomic<bool> wasInsideCall = false;
  std::atomic<bool> wasOffQueue = false;
};

using Worlds = testing::Types<FakeNetworkWorld, LinuxNetworkWorld>;
TYPED_TEST_SUITE(NetworkConnectionTest, Worlds);

TYPED_TEST(NetworkConnectionTest, IsReadyOnceAfterStart) {
  this->start();
  this->world.settle();
  EXPECT_EQ(this->events.all(), std::vector<std::string>{"ready"});
}

TYPED_TEST(NetworkConnectionTest, RunsEverythingOnTheQueueAndNothingInsideTheCallThatCausedIt) {
  this->start();
  this->send("hello");
  this->receive();
  ASSERT_TRUE(this->waitFor("sent"));
  call([&] { this->connection->cancel(); });
  ASSERT_TRUE(this->waitFor("cancelled"));
  ASSERT_TRUE(this->waitFor("receive failed"));
  this->send("too late");
  ASSERT_TRUE(this->waitFor("send failed"));
  EXPECT_FALSE(this->wasInsideCall);
  EXPECT_FALSE(this->wasOffQueue);
}

TYPED_TEST(NetworkConnectionTest, WritesEachMessageWholeAndInOrder) {
  this->start();
  std::string expected;
  for (int index = 0; index < 200; ++index) {
    // Small ones, and ones that no socket takes at once.
    const std::string message(index % 50 == 0 ? 700'000 : 100, static_cast<char>('a' + index % 26));
    expected += message;
    this->send(message);
  }
  EXPECT_EQ(this->world.peerReads(expected.size()), expected);
  EXPECT_TRUE(this->waitFor("sent", 200));
  EXPECT_FALSE(this->events.has("send failed"));
}

TYPED_TEST(NetworkConnectionTest, ReceivesWhatThePeerWroteInOrder) {
  this->start();
  this->receive();
  this->world.peerWrites("first");
  ASSERT_TRUE(this->waitFor("received"));
  this->world.peerWrites("second");
  this->world.settle();
  EXPECT_EQ(this->received, "first") << "one receive completes once";
  this->receive();
  ASSERT_TRUE(this->waitFor("received", 2));
  EXPECT_EQ(this->received, "firstsecond");
}

TYPED_TEST(NetworkConnectionTest, ReceivesBytesOfAnyValue) {
  std::string bytes;
  for (int value = 0; value < 256; ++value) {
    bytes += static_cast<char>(value);
  }
  this->start();
  this->world.peerWrites(bytes);
  this->receive();
  ASSERT_TRUE(this->waitFor("received"));
  EXPECT_EQ(this->received, bytes);
}

TYPED_TEST(NetworkConnectionTest, TreatsTheOrderlyCloseOfThePeerAsAReceiveError) {
  this->start();
  this->receive();
  this->world.peerCloses();
  ASSERT_TRUE(this->waitFor("receive failed"));
  EXPECT_FALSE(this->events.has("received"));
}

TYPED_TEST(NetworkConnectionTest, DeliversWhatCameBeforeTheClose) {
  this->start();
  this->world.peerWrites("last words");
  this->world.peerCloses();
  this->receive();
  ASSERT_TRUE(this->waitFor("received"));
  EXPECT_EQ(this->received, "last words");
  this->receive();
  EXPECT_TRUE(this->waitFor("receive failed"));
}

TYPED_TEST(NetworkConnectionTest, FailsWhenTheNetworkBreaks) {
  this->start();
  this->receive();
  this->world.peerBreaks();
  ASSERT_TRUE(this->waitFor("failed"));
  EXPECT_EQ(this->events.all(), (std::vector<std::string>{"ready", "receive failed", "failed"}));
  this->send("to nobody");
  EXPECT_TRUE(this->waitFor("send failed"));
}

TYPED_TEST(NetworkConnectionTest, CanBeCancelledAfterItFailed) {
  this->start();
  this->receive();
  this->world.peerBreaks();
  ASSERT_TRUE(this->waitFor("failed"));
  this->connection->cancel();
  EXPECT_TRUE(this->waitFor("cancelled"));
}

TYPED_TEST(NetworkConnectionTest, CancelCompletesOutstandingWorkWithErrorsThenReportsOnce) {
  this->start();
  this->world.peerStopsReading();
  this->receive();
  // More than the system buffers for a peer that does not read.
  for (int index = 0; index < 8; ++index) {
    this->send(std::string(4'000'000, 'x'));
  }
  this->world.settle();
  this->connection->cancel();
  this->connection->cancel();
  ASSERT_TRUE(this->waitFor("cancelled"));
  this->world.settle();
  const std::vector<std::string> seen = this->events.all();
  EXPECT_EQ(seen.back(), "cancelled");
  EXPECT_EQ(this->events.count("cancelled"), 1U);
  EXPECT_EQ(this->events.count("receive failed"), 1U);
  EXPECT_EQ(this->events.count("sent") + this->events.count("send failed"), 8U);
  EXPECT_GT(this->events.count("send failed"), 0U);
}

TYPED_TEST(NetworkConnectionTest, LetsGoOfItsStateHandlerAfterItWasCancelled) {
  auto token = std::make_shared<int>(0);
  const std::weak_ptr<int> watch = token;
  this->connection->setStateHandler([this, token = std::move(token)](ConnectionState state) {
    this->note(state == ConnectionState::cancelled ? "cancelled" : "ready");
  });
  this->start();
  EXPECT_FALSE(watch.expired());
  this->connection->cancel();
  ASSERT_TRUE(this->waitFor("cancelled"));
  EXPECT_TRUE(this->world.pumpUntil([&] { return watch.expired(); }));
}

TYPED_TEST(NetworkConnectionTest, LivesByItsOutstandingWork) {
  this->start();
  this->receive();
  this->world.settle();
  this->world.peerWrites("still there?");
  this->world.forgetPeer();
  this->connection.reset();
  EXPECT_TRUE(this->waitFor("received"));
  EXPECT_EQ(this->received, "still there?");
}

}  // namespace
}  // namespace tarnix::contract
