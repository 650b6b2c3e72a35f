#include "probe/link/companion_connection.h"

#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

class CompanionConnectionTest : public testing::Test {
 protected:
  ~CompanionConnectionTest() override { peer_->abandon(); }

  void requestMessage() {
    link_->receiveCompanionMessage([this](const std::optional<CompanionMessage>& message,
                                          const std::optional<CompanionError>& error) {
      EXPECT_TRUE(queue_.isRunning());
      EXPECT_NE(message.has_value(), error.has_value());
      received_.push_back(message ? std::string(rawValue(message->type))
                          : error->kind == CompanionError::Kind::decoding ? "decoding error"
                          : error->kind == CompanionError::Kind::network  ? "network error"
                                                                          : "other error");
    });
    queue_.runReady();
  }

  void sendMessage(const CompanionMessage& message) {
    link_->sendCompanionMessage(message, [this](const std::optional<CompanionError>& error) {
      EXPECT_TRUE(queue_.isRunning());
      sent_.push_back(!error                                          ? "sent"
                      : error->kind == CompanionError::Kind::encoding ? "encoding error"
                                                                      : "network error");
    });
  }

  using Names = std::vector<std::string>;

  fakes::FakeSerialQueue queue_;
  std::shared_ptr<fakes::FakeConnection> peer_ = std::make_shared<fakes::FakeConnection>(queue_);
  std::shared_ptr<CompanionConnection> link_ = std::make_shared<CompanionConnection>(peer_, queue_);
  Names received_;
  Names sent_;
};

const CompanionMessage heartbeat{CompanionMessageType::heartbeat, "", {}};

TEST_F(CompanionConnectionTest, LeavesCodingToTheQueue) {
  sendMessage(heartbeat);
  EXPECT_EQ(peer_->written, "");
  queue_.runReady();
  EXPECT_EQ(peer_->written, frameOf(heartbeat));
  EXPECT_EQ(sent_, Names{"sent"});
}

TEST_F(CompanionConnectionTest, WritesMessagesInOrder) {
  sendMessage({CompanionMessageType::eventLog, "{}", {}});
  sendMessage(heartbeat);
  queue_.runReady();
  EXPECT_EQ(typesSentTo(*peer_), (Names{"event.log", "heartbeat"}));
}

TEST_F(CompanionConnectionTest, SaysWhenAMessageHasNoForm) {
  sendMessage({CompanionMessageType::heartbeat, "", {std::numeric_limits<double>::infinity()}});
  queue_.runReady();
  EXPECT_EQ(sent_, Names{"encoding error"});
  EXPECT_EQ(peer_->written, "");
}

TEST_F(CompanionConnectionTest, SaysWhenTheNetworkRefuses) {
  link_->cancel();
  sendMessage(heartbeat);
  queue_.runReady();
  EXPECT_EQ(sent_, Names{"network error"});
}

TEST_F(CompanionConnectionTest, AsksForBytesOnlyWhenAMessageIsWanted) {
  EXPECT_FALSE(peer_->hasOutstandingReceive());
  requestMessage();
  EXPECT_TRUE(peer_->hasOutstandingReceive());
}

TEST_F(CompanionConnectionTest, HandsOutOneMessageARequest) {
  peer_->arrive(frameOf(heartbeat) + frameOf("garbage") + frameOf(heartbeat));
  requestMessage();
  EXPECT_EQ(received_, Names{"heartbeat"});
  requestMessage();
  EXPECT_EQ(received_, (Names{"heartbeat", "decoding error"}));
  requestMessage();
  EXPECT_EQ(received_, (Names{"heartbeat", "decoding error", "heartbeat"}));
}

TEST_F(CompanionConnectionTest, AnswersSeveralRequestsInTheirOrder) {
  requestMessage();
  requestMessage();
  peer_->arrive(frameOf(heartbeat));
  queue_.runReady();
  EXPECT_EQ(received_, Names{"heartbeat"});
  EXPECT_TRUE(peer_->hasOutstandingReceive());
  peer_->arrive(frameOf("garbage"));
  queue_.runReady();
  EXPECT_EQ(received_, (Names{"heartbeat", "decoding error"}));
}

TEST_F(CompanionConnectionTest, HandsOutWhatArrivedBeforeTheEnd) {
  peer_->arrive(frameOf(heartbeat) + frameOf(heartbeat));
  peer_->closeByPeer();
  requestMessage();
  requestMessage();
  requestMessage();
  EXPECT_EQ(received_, (Names{"heartbeat", "heartbeat", "network error"}));
}

TEST_F(CompanionConnectionTest, TellsEveryRequestOfTheEnd) {
  requestMessage();
  requestMessage();
  peer_->arrive(std::string_view("\0\0\0\x10{", 5));
  peer_->closeByPeer();
  queue_.runReady();
  EXPECT_EQ(received_, (Names{"network error", "network error"}));
}

TEST_F(CompanionConnectionTest, LivesWhileWorkIsOutstanding) {
  sendMessage(heartbeat);
  requestMessage();
  const std::weak_ptr<CompanionConnection> weak = link_;
  link_.reset();
  queue_.runReady();
  EXPECT_FALSE(weak.expired()) << "a receive is outstanding";
  peer_->closeByPeer();
  queue_.runReady();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(sent_, Names{"sent"});
}

}  // namespace
}  // namespace tarnix::tests
