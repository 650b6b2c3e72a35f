#include "probe/link/outgoing_frame.h"

#include "probe/link/companion_framer.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

struct Holder {
  std::string name;
  Bytes first;
  Bytes second;

  static constexpr auto fields() {
    return std::tuple{Field{"name", &Holder::name}, Field{"first", &Holder::first},
                      Field{"second", &Holder::second}};
  }
};

std::string mixed(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t index = 0; index < size; ++index) {
    bytes[index] = static_cast<char>(index * 31 + index / 253);
  }
  return bytes;
}

/// The pieces one after the other; their number is added to `count`.
std::string joined(OutgoingFrame frame, std::size_t* count = nullptr) {
  std::string whole;
  for (std::string piece = frame.nextPiece(); !piece.empty(); piece = frame.nextPiece()) {
    whole += piece;
    if (count != nullptr) {
      ++*count;
    }
  }
  return whole;
}

std::optional<CompanionMessage> longMessage(const Holder& holder) {
  return CompanionMessage::makeLong(CompanionMessageType::syncFull,
                                    std::make_shared<const Holder>(holder), Timestamp{785e6});
}

TEST(OutgoingFrameTest, IsTheFrameOfTheWholeMessage) {
  constexpr std::size_t piece = OutgoingFrame::pieceSize;
  for (const std::size_t nameSize : {0U, 1U, 2U, 3U, 5'000U}) {
    for (const std::size_t size :
         {JsonText::shortestLeftOut, JsonText::shortestLeftOut + 1, std::size_t{70'000},
          piece / 4 * 3 - 30, piece / 4 * 3 - 29, piece / 4 * 3, piece, 3 * piece + 1}) {
      const Holder holder{std::string(nameSize, 'n'), {mixed(size)}, {mixed(size / 2)}};
      const std::optional<CompanionMessage> inOne =
          CompanionMessage::make(CompanionMessageType::syncFull, holder, Timestamp{785e6});
      const std::optional<CompanionMessage> inPieces = longMessage(holder);
      ASSERT_NE(inPieces->longPayload, nullptr);
      EXPECT_EQ(inPieces->longPayload->size(), inOne->payload.size());
      EXPECT_TRUE(joined(*OutgoingFrame::make(*inPieces)) ==
                  CompanionFramer::handleOutput(*inOne->encodeEnvelope()))
          << nameSize << " and " << size;
    }
  }
}

TEST(OutgoingFrameTest, IsTheFrameAtEachRemainderOfAPiece) {
  for (std::size_t size = 0; size < 12; ++size) {
    const Holder holder{std::string(OutgoingFrame::pieceSize - 2'000 + size, 'n'),
                        {mixed(JsonText::shortestLeftOut)},
                        {mixed(size)}};
    const std::optional<CompanionMessage> inOne =
        CompanionMessage::make(CompanionMessageType::syncFull, holder, Timestamp{785e6});
    EXPECT_TRUE(joined(*OutgoingFrame::make(*longMessage(holder))) ==
                CompanionFramer::handleOutput(*inOne->encodeEnvelope()))
        << size;
  }
}

TEST(OutgoingFrameTest, ComesInPieces) {
  std::size_t count = 0;
  joined(*OutgoingFrame::make(*longMessage({"n", {mixed(500'000)}, {}})), &count);
  EXPECT_GE(count, 500'000 * 4 / 3 / OutgoingFrame::pieceSize);
}

TEST(OutgoingFrameTest, IsNotMadeOfWhatHasNoLongBytes) {
  const std::optional<CompanionMessage> message = longMessage({"n", {mixed(20)}, {}});
  EXPECT_EQ(message->longPayload, nullptr);
  EXPECT_EQ(message->decode<Holder>()->first, Bytes{mixed(20)});
  EXPECT_FALSE(OutgoingFrame::make(*message).has_value());
}

TEST(OutgoingFrameTest, IsNotMadeOfWhatHasNoForm) {
  EXPECT_FALSE(longMessage({"\xFF", {mixed(5'000)}, {}}).has_value());
  std::optional<CompanionMessage> message = longMessage({"n", {mixed(5'000)}, {}});
  message->timestamp.secondsSinceReference = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(OutgoingFrame::make(*message).has_value());
}

/// A link whose peer takes one piece after the other.
class LongSendTest : public testing::Test {
 protected:
  LongSendTest() { peer_->isReading = false; }
  ~LongSendTest() override { peer_->abandon(); }

  void send(CompanionMessage message) {
    link_->sendCompanionMessage(std::move(message),
                                [this](const std::optional<CompanionError>& error) {
                                  sent_.push_back(error ? error->description : "sent");
                                });
    queue_.runReady();
  }

  void takeOnePiece() {
    peer_->completeSends(1);
    queue_.runReady();
  }

  fakes::FakeSerialQueue queue_;
  std::shared_ptr<fakes::FakeConnection> peer_ = std::make_shared<fakes::FakeConnection>(queue_);
  std::shared_ptr<CompanionConnection> link_ = std::make_shared<CompanionConnection>(peer_, queue_);
  const CompanionMessage long_ = *longMessage({"n", {mixed(900'000)}, {mixed(900'000)}});
  std::vector<std::string> sent_;
};

TEST_F(LongSendTest, KeepsTwoPiecesOnTheirWayAndWhatFollowsWaiting) {
  send(long_);
  send({CompanionMessageType::heartbeat, "", {}});
  while (sent_.empty()) {
    ASSERT_GT(peer_->outstandingSendCount(), 0U);
    ASSERT_LE(peer_->outstandingSendCount(), 2U);
    takeOnePiece();
  }
  EXPECT_EQ(sent_, std::vector<std::string>{"sent"});
  takeOnePiece();
  EXPECT_EQ(sent_.size(), 2U);
  EXPECT_EQ(peer_->written, joined(*OutgoingFrame::make(long_)) +
                                frameOf({CompanionMessageType::heartbeat, "", {}}));
}

TEST_F(LongSendTest, EndsOnceWhenTheNetworkBreaks) {
  send(long_);
  send({CompanionMessageType::heartbeat, "", {}});
  takeOnePiece();
  peer_->fail();
  queue_.runReady();
  ASSERT_EQ(sent_.size(), 2U);
  EXPECT_NE(sent_[0], "sent");
  EXPECT_NE(sent_[1], "sent");
  send(long_);
  EXPECT_EQ(sent_.size(), 3U) << "and again for whoever does not know yet";
}

}  // namespace
}  // namespace tarnix::tests
