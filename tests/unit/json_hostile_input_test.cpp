#include <gtest/gtest.h>

#include <string>

#include "probe/link/json_codec.h"
#include "probe/model/full_sync_payload.h"
#include "probe/model/transferable_log_entry.h"
#include "probe/model/transferable_url_match_pattern.h"

namespace tarnix::tests {
namespace {

constexpr std::size_t deep = 1'000'000;

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (std::size_t index = 0; index < count; ++index) {
    result += text;
  }
  return result;
}

TEST(HostileJson, OfAMillionOpenBracketsIsRefused) {
  EXPECT_FALSE(JsonDocument::parse(std::string(deep, '[')));
  EXPECT_FALSE(JsonDocument::parse(repeated(R"({"a":)", deep)));
}

TEST(HostileJson, NestedAMillionDeepIsReadAndLetGoOf) {
  EXPECT_TRUE(JsonDocument::parse(std::string(deep, '[') + std::string(deep, ']')));
  EXPECT_FALSE(decodeJson<TransferableURLMatchPattern>(R"({"mode":"exact","extra":)" +
                                                       repeated(R"({"a":)", deep) + "1" +
                                                       std::string(deep, '}') + "}"))
      << "the nested member is passed over, and one is missing";
}

TEST(HostileJson, WithADeepMemberThatNobodyAskedForIsRead) {
  const auto pattern = decodeJson<TransferableURLMatchPattern>(
      R"({"mode":"exact","pattern":"a","extra":)" + std::string(deep, '[') +
      std::string(deep, ']') + "}");
  ASSERT_TRUE(pattern);
  EXPECT_EQ(pattern->pattern, "a");
}

TEST(HostileJson, IsRefusedForEachKindOfGarbage) {
  for (const char* text : {"",
                           " ",
                           "{",
                           "}",
                           "{]",
                           "nul",
                           "tru",
                           "\"",
                           "\"\\x\"",
                           "\"\\ud800\"",
                           "\"\\udc00\"",
                           "\"a\\ud66c\\udf88\"",
                           "{\"\\udc00\":1}",
                           "\"\\u12\"",
                           "01",
                           "1.",
                           "-",
                           "1e",
                           "1e999",
                           "0.1e999",
                           "NaN",
                           "Infinity",
                           "+1",
                           "{\"a\"}",
                           "{\"a\":}",
                           "{\"a\":1,}",
                           "[1,]",
                           "[1 2]",
                           "{a:1}",
                           "'a'",
                           "\"\x01\"",
                           "\"\xff\"",
                           "\"\xc0\x80\"",
                           "\"\xed\xa0\x80\"",
                           "\"\xf4\x90\x80\x80\"",
                           "\xef\xbb\xbf{",
                           "/*c*/{}",
                           "{}x",
                           "{} {}"}) {
    EXPECT_FALSE(JsonDocument::parse(text)) << text;
  }
}

TEST(HostileJson, MayHoldAnyCharacter) {
  const auto pattern = decodeJson<TransferableURLMatchPattern>(
      R"({"mode":"\uD66C\ud83c\uDF89\ud7ff\ue000","pattern":")"
      "\xed\x9f\xbf"
      R"("})");
  ASSERT_TRUE(pattern);
  EXPECT_EQ(pattern->mode, "\xed\x99\xac\xf0\x9f\x8e\x89\xed\x9f\xbf\xee\x80\x80");
  EXPECT_EQ(pattern->pattern, "\xed\x9f\xbf");
}

TEST(HostileJson, CutAnywhereIsRefusedWithoutHarm) {
  TransferableLogEntry entry;
  entry.message = "a \"quoted\" \xf0\x9f\x8e\x89 line\n";
  entry.screenName = "Home";
  const std::string whole = encodeJson(entry).value();
  EXPECT_EQ(decodeJson<TransferableLogEntry>(whole), entry);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(decodeJson<TransferableLogEntry>(std::string_view(whole).substr(0, length)));
  }
}

TEST(HostileJson, WithAnEmbeddedZeroKeepsIt) {
  const auto pattern =
      decodeJson<TransferableURLMatchPattern>(R"({"mode":"a\u0000b","pattern":""})");
  ASSERT_TRUE(pattern);
  EXPECT_EQ(pattern->mode, std::string("a\0b", 3));
  EXPECT_EQ(encodeJson(*pattern), R"({"mode":"a\u0000b","pattern":""})");
}

struct Whole {
  std::int64_t number = 0;
  static constexpr auto fields() { return std::tuple{Field{"number", &Whole::number}}; }
};
struct Natural {
  std::uint64_t number = 0;
  static constexpr auto fields() { return std::tuple{Field{"number", &Natural::number}}; }
};

template <class R>
std::optional<decltype(R::number)> numberIn(std::string_view text) {
  const auto record = decodeJson<R>("{\"number\":" + std::string(text) + "}");
  return record ? std::optional(record->number) : std::nullopt;
}

TEST(JsonNumber, IsAnIntegerWhenItIsAWholeOneInRange) {
  EXPECT_EQ(numberIn<Whole>("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(numberIn<Whole>("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(numberIn<Whole>("3.0"), 3);
  EXPECT_EQ(numberIn<Whole>("1e3"), 1000);
  EXPECT_EQ(numberIn<Natural>("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
  for (const char* text :
       {"9223372036854775808", "1e300", "-1e300", "1.5", "\"1\"", "true", "null", "[]", "{}"}) {
    EXPECT_FALSE(numberIn<Whole>(text)) << text;
  }
  for (const char* text : {"-1", "18446744073709551616", "0.5"}) {
    EXPECT_FALSE(numberIn<Natural>(text)) << text;
  }
}

struct Real {
  double number = 0;
  static constexpr auto fields() { return std::tuple{Field{"number", &Real::number}}; }
};

TEST(JsonNumber, IsExactHoweverItIsWritten) {
  EXPECT_EQ(numberIn<Real>("0.1"), 0.1);
  EXPECT_EQ(numberIn<Real>("786000123.4567891"), 786000123.4567891);
  EXPECT_EQ(numberIn<Real>("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(numberIn<Real>("5e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(numberIn<Real>("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(numberIn<Real>("123456789012345678901234567890"), 1.2345678901234568e29);
  EXPECT_EQ(numberIn<Real>("1" + std::string(300, '0') + "e-300"), 1);
  EXPECT_EQ(numberIn<Real>("0." + std::string(300, '0') + "1e301"), 1);
}

TEST(JsonNumber, IsZeroForEveryWayToWriteZero) {
  for (const char* text : {"0", "-0", "0.0", "-0.0", "0e0", "0e50", "0E-50", "0e308", "0.000e99",
                           "1e-400", "-1e-400"}) {
    EXPECT_EQ(numberIn<Real>(text), 0) << text;
  }
  EXPECT_EQ(numberIn<Real>("0." + std::string(400, '0') + "1"), 0);
}

TEST(JsonNumber, IsRefusedWhenItIsTooLarge) {
  EXPECT_FALSE(numberIn<Real>("1e309"));
  EXPECT_FALSE(numberIn<Real>("-1e309"));
  EXPECT_FALSE(numberIn<Real>("1e2147483648"));
  EXPECT_FALSE(numberIn<Real>("1e99999999999999999999"));
  EXPECT_FALSE(numberIn<Real>("1" + std::string(400, '0')));
}

}  // namespace
}  // namespace tarnix::tests
