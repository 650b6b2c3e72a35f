#include "platforms/qt6/webengine/posted_message.h"

#include <gtest/gtest.h>

#include <variant>

#include "platforms/qt6/webengine/moved_calls.h"
#include "platforms/qt6/webengine/script_wrapping.h"

namespace tarnix::contract {
namespace {

using platform::PropertyValue;
using qt6::CallSite;
using qt6::messageMark;
using qt6::PostedMessage;

std::optional<PostedMessage> parse(const QString& rest) {
  return PostedMessage::parse(messageMark() + rest);
}

TEST(PostedMessage, IsToldByItsMark) {
  EXPECT_TRUE(PostedMessage::isOne(messageMark()));
  EXPECT_FALSE(PostedMessage::isOne(messageMark().chopped(1)));
  EXPECT_FALSE(PostedMessage::isOne("tarnixprobe-0:"));
  EXPECT_FALSE(PostedMessage::isOne(" " + messageMark()));
  EXPECT_FALSE(PostedMessage::isOne(QString()));
}

TEST(PostedMessage, IsReadWhole) {
  const auto message =
      parse("3:0.5+2:178:http://a4:namedd41:5:levels3:log3:notb4:true1:nn3:1.51:xx0:");
  EXPECT_FALSE(message.has_value()) << "a length too long";
  const auto right =
      parse("3:0.5+2:178:http://a4:named40:5:levels3:log3:notb4:true1:nn3:1.51:xx0:");
  ASSERT_TRUE(right.has_value());
  EXPECT_EQ(right->document, "0.5");
  EXPECT_EQ(right->caller->line, 17);
  EXPECT_EQ(right->caller->source, "http://a");
  EXPECT_EQ(right->handlerName, "name");
  const auto& members = std::get<PropertyValue::Dictionary>(right->body.value).members;
  ASSERT_EQ(members.size(), 4U);
  EXPECT_EQ(members[0].name, "level");
  EXPECT_EQ(std::get<std::string>(members[0].value.value), "log");
  EXPECT_TRUE(std::get<bool>(members[1].value.value));
  EXPECT_EQ(std::get<double>(members[2].value.value), 1.5);
  EXPECT_TRUE(std::holds_alternative<PropertyValue::Other>(members[3].value.value));
}

TEST(PostedMessage, NeedsNoCallerAndNoDictionary) {
  const auto message = parse("1:d-1:ns5:hello");
  ASSERT_TRUE(message.has_value());
  EXPECT_FALSE(message->caller.has_value());
  EXPECT_EQ(std::get<std::string>(message->body.value), "hello");
}

TEST(PostedMessage, CountsUtf16Units) {
  const auto message = parse(QString::fromUtf8("1:d-1:ns3:\xF0\x9F\x90\xBB!"));
  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(std::get<std::string>(message->body.value), "\xF0\x9F\x90\xBB!");
}

TEST(PostedMessage, PassesOverWhatIsMalformed) {
  for (const char* rest :
       {"", ":", "1", "1:", "-1:", "x:d", "99999999999999999999:d", "1:d", "1:d+", "1:d+1:1",
        "1:d+1:11:", "1:d-", "1:d-1:n", "1:d-1:ns", "1:d-1:ns9:x", "1:d-1:nd5:1:a",
        "1:d-1:nd2:1:", "1:d-1:nd4:1:as", "1:d-1:nd6:1:as9:"}) {
    EXPECT_FALSE(parse(rest).has_value()) << rest;
  }
}

TEST(PostedMessage, HasNoNumberThatIsNone) {
  for (const char* text : {"8:Infinity", "0:", "3:1,5", "3:abc"}) {
    const auto message = parse("1:d-1:nn" + QString(text));
    ASSERT_TRUE(message.has_value()) << text;
    EXPECT_TRUE(std::holds_alternative<PropertyValue::Other>(message->body.value)) << text;
  }
}

class MovedCalls : public testing::Test {
 protected:
  static void expect(const QString& document, const CallSite& caller, const std::string& text,
                     const void* page = &firstPage) {
    PostedMessage message;
    message.document = document;
    message.caller = caller;
    message.body = {PropertyValue::Dictionary{{{"message", PropertyValue{text}}}}};
    qt6::moved_calls::expect(page, message);
  }

  static CallSite original(const QString& message, const QString& source = qt6::ownScriptSource,
                           const void* page = &firstPage) {
    return qt6::moved_calls::original(page, message, {42, source});
  }

  ~MovedCalls() override {
    qt6::moved_calls::forget(&firstPage);
    qt6::moved_calls::forget(&secondPage);
  }

  static constexpr char firstPage = 0;
  static constexpr char secondPage = 0;
};

TEST_F(MovedCalls, AreTakenOnce) {
  expect("one", {7, "page"}, "a");
  const CallSite site = original("a");
  EXPECT_EQ(site.line, 7);
  EXPECT_EQ(site.source, "page");
  EXPECT_EQ(original("a").line, 42);
}

TEST_F(MovedCalls, AreOnlyThoseThatOurScriptPassedOn) {
  expect("one", {7, "page"}, "a");
  EXPECT_EQ(original("a", "page").line, 42);
  EXPECT_EQ(original("a", "userscript:other").line, 42);
  EXPECT_EQ(original("a").line, 7);
}

TEST_F(MovedCalls, AreToldApartByWhatTheySay) {
  expect("one", {1, "first"}, "a");
  expect("two", {2, "second"}, "b");
  EXPECT_EQ(original("b").line, 2);
  EXPECT_EQ(original("a").line, 1);
}

TEST_F(MovedCalls, ComeInOrderWhenTheyAreWrittenOtherwise) {
  expect("one", {1, "first"}, R"({"a":1})");
  expect("two", {2, "second"}, "[]");
  EXPECT_EQ(original("[object Object]").line, 1);
  EXPECT_EQ(original("").line, 2);
}

TEST_F(MovedCalls, ComeFromThePageThatAnnouncedThem) {
  expect("one", {1, "first"}, R"({"a":1})");
  expect("two", {2, "second"}, "a", &secondPage);
  EXPECT_EQ(original("[object Object]", qt6::ownScriptSource, &secondPage).line, 2);
  EXPECT_EQ(original("[object Object]", qt6::ownScriptSource, &secondPage).line, 42);
  EXPECT_EQ(original("[object Object]").line, 1);
}

TEST_F(MovedCalls, AreForgottenWithTheirPage) {
  expect("one", {1, "first"}, "a");
  qt6::moved_calls::forget(&firstPage);
  EXPECT_EQ(original("a").line, 42);
}

TEST_F(MovedCalls, AreForgottenWhenTheyNeverCome) {
  expect("one", {1, "first"}, "a");
  expect("one", {2, "second"}, "a");
  EXPECT_EQ(original("a").line, 2);
  EXPECT_EQ(original("a").line, 42);
  for (int document = 0; document < 1000; ++document) {
    expect(QString::number(document), {document, "gone"}, "a");
  }
  EXPECT_EQ(original("a").line, 1000 - 64);
}

}  // namespace
}  // namespace tarnix::contract
