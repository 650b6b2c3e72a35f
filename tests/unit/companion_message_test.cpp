#include "probe/link/companion_message.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "probe/model/transferable_url_match_pattern.h"

namespace tarnix::tests {
namespace {

struct EmptyRecord {
  static constexpr auto fields() { return std::tuple{}; }
};

struct NumberRecord {
  double number = 0;
  static constexpr auto fields() { return std::tuple{Field{"number", &NumberRecord::number}}; }
};

TEST(CompanionMessage, OfAnEmptyRecordHasAnEmptyObjectAsPayload) {
  const auto message = CompanionMessage::make(CompanionMessageType::commandScreenHTML,
                                              EmptyRecord{}, Timestamp{12.5});
  ASSERT_TRUE(message);
  EXPECT_EQ(message->payload, "{}");
  EXPECT_EQ(message->encodeEnvelope(),
            R"({"type":"command.screenHTML","payload":"e30=","timestamp":12.5})");
}

TEST(CompanionMessage, WithoutPayloadHasAnEmptyString) {
  const CompanionMessage heartbeat{CompanionMessageType::heartbeat, "", {1}};
  EXPECT_EQ(heartbeat.encodeEnvelope(), R"({"type":"heartbeat","payload":"","timestamp":1.0})");
}

TEST(CompanionMessage, GoesThereAndBackForEveryType) {
  for (const CompanionMessageType type : allCompanionMessageTypes()) {
    const CompanionMessage message{
        type, R"({"mode":"exact","pattern":"a/b"})", {786'000'123.456789}};
    const auto again = CompanionMessage::decodeEnvelope(message.encodeEnvelope().value());
    ASSERT_TRUE(again) << rawValue(type);
    EXPECT_EQ(again->type, message.type);
    EXPECT_EQ(again->payload, message.payload);
    EXPECT_DOUBLE_EQ(again->timestamp.secondsSinceReference,
                     message.timestamp.secondsSinceReference);
  }
}

TEST(CompanionMessage, CarriesAnyBytesAsPayload) {
  std::string payload;
  for (int value = 0; value < 256; ++value) {
    payload.push_back(static_cast<char>(value));
  }
  const CompanionMessage message{CompanionMessageType::eventLog, payload, {}};
  const auto again = CompanionMessage::decodeEnvelope(message.encodeEnvelope().value());
  ASSERT_TRUE(again);
  EXPECT_EQ(again->payload, payload);
}

TEST(CompanionMessage, ReadsItsKeysInAnyOrderAndPassesOverOthers) {
  const auto message = CompanionMessage::decodeEnvelope(
      R"( {"extra":[1,{}], "timestamp":0, "payload":"e30=", "type":"heartbeat"} )");
  ASSERT_TRUE(message);
  EXPECT_EQ(message->type, CompanionMessageType::heartbeat);
  EXPECT_EQ(message->payload, "{}");
}

TEST(CompanionMessage, CountsTimeFromTheYear2001) {
  const auto message =
      CompanionMessage::decodeEnvelope(R"({"type":"heartbeat","payload":"","timestamp":0})");
  ASSERT_TRUE(message);
  EXPECT_EQ(message->timestamp.toTimePoint(),
            std::chrono::sys_days{std::chrono::year{2001} / std::chrono::January / 1});
}

struct Refused {
  const char* why;
  const char* envelope;
};

std::string nameOf(const testing::TestParamInfo<Refused>& parameter) { return parameter.param.why; }

class RefusedEnvelope : public testing::TestWithParam<Refused> {};

TEST_P(RefusedEnvelope, IsNoMessage) {
  EXPECT_FALSE(CompanionMessage::decodeEnvelope(GetParam().envelope)) << GetParam().envelope;
}

INSTANTIATE_TEST_SUITE_P(
    CompanionMessage, RefusedEnvelope,
    testing::Values(
        Refused{"UnknownType", R"({"type":"command.unknownThing","payload":"e30=","timestamp":0})"},
        Refused{"TypeInOtherCase", R"({"type":"Heartbeat","payload":"e30=","timestamp":0})"},
        Refused{"TypeWithSpace", R"({"type":"heartbeat ","payload":"e30=","timestamp":0})"},
        Refused{"EmptyType", R"({"type":"","payload":"e30=","timestamp":0})"},
        Refused{"NullType", R"({"type":null,"payload":"e30=","timestamp":0})"},
        Refused{"NumberType", R"({"type":1,"payload":"e30=","timestamp":0})"},
        Refused{"NoType", R"({"payload":"e30=","timestamp":0})"},
        Refused{"NoPayload", R"({"type":"heartbeat","timestamp":0})"},
        Refused{"NoTimestamp", R"({"type":"heartbeat","payload":"e30="})"},
        Refused{"NullPayload", R"({"type":"heartbeat","payload":null,"timestamp":0})"},
        Refused{"NestedPayload", R"({"type":"heartbeat","payload":{},"timestamp":0})"},
        Refused{"PayloadWithoutPadding", R"({"type":"heartbeat","payload":"e30","timestamp":0})"},
        Refused{"PayloadWithLineBreak", R"({"type":"heartbeat","payload":"e3\n0=","timestamp":0})"},
        Refused{"PayloadInUrlAlphabet", R"({"type":"heartbeat","payload":"_-_-","timestamp":0})"},
        Refused{"TextTimestamp", R"({"type":"heartbeat","payload":"e30=","timestamp":"0"})"},
        Refused{"NullTimestamp", R"({"type":"heartbeat","payload":"e30=","timestamp":null})"},
        Refused{"Array", R"(["heartbeat","e30=",0])"}, Refused{"Empty", ""},
        Refused{"TwoValues", R"({"type":"heartbeat","payload":"","timestamp":0} {})"}),
    nameOf);

TEST(CompanionMessage, OfARecordWithoutJsonFormIsNotMade) {
  for (const double number :
       {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_FALSE(
        CompanionMessage::make(CompanionMessageType::eventLog, NumberRecord{number}, Timestamp{}));
  }
  EXPECT_FALSE(CompanionMessage::make(CompanionMessageType::eventLog,
                                      TransferableURLMatchPattern{"exact", "\xc3("}, Timestamp{}));
}

TEST(CompanionMessage, AtATimeThatIsNoNumberIsNotWritten) {
  const CompanionMessage message{CompanionMessageType::heartbeat, "", {std::nan("")}};
  EXPECT_FALSE(message.encodeEnvelope());
}

TEST(CompanionMessage, GivesItsPayloadAsTheRecordItHolds) {
  const CompanionMessage message{
      CompanionMessageType::eventLog, R"({"mode":"exact","pattern":"a"})", {}};
  EXPECT_EQ(message.decode<TransferableURLMatchPattern>(),
            (TransferableURLMatchPattern{"exact", "a"}));
  EXPECT_FALSE(message.decode<NumberRecord>());
}

TEST(Timestamp, GoesFromAndToTheSystemClock) {
  const auto time =
      std::chrono::sys_days{std::chrono::year{2026} / 3 / 1} + std::chrono::microseconds{123'456};
  EXPECT_EQ(Timestamp::from(time).toTimePoint(), time);
  EXPECT_EQ(Timestamp::from(std::chrono::sys_days{std::chrono::year{2001} / 1 / 2}),
            (Timestamp{86'400}));
}

TEST(Timestamp, OfAPeerMayBeAnyNumber) {
  using Clock = std::chrono::system_clock;
  EXPECT_GT(Timestamp{1e300}.toTimePoint(), Clock::time_point{});
  EXPECT_LT(Timestamp{-1e300}.toTimePoint(), Clock::time_point{});
  EXPECT_EQ(Timestamp{std::nan("")}.toTimePoint(), Clock::time_point{});
}

}  // namespace
}  // namespace tarnix::tests
