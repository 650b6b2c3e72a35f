#include "probe/link/json_writer.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tarnix::tests {
namespace {

std::optional<std::string> written(std::string_view text) {
  JsonWriter writer;
  writer.string(text);
  std::string json;
  return writer.take(json) ? std::optional(json) : std::nullopt;
}

/// Of one byte of ASCII, in the plainest way.
std::string escaped(char character) {
  const std::map<char, std::string> shortForms = {{'"', "\\\""}, {'\\', "\\\\"}, {'\b', "\\b"},
                                                  {'\f', "\\f"}, {'\n', "\\n"},  {'\r', "\\r"},
                                                  {'\t', "\\t"}};
  if (const auto found = shortForms.find(character); found != shortForms.end()) {
    return found->second;
  }
  if (character >= ' ') {
    return std::string(1, character);
  }
  const std::string digits = "0123456789ABCDEF";
  return std::string("\\u00") + digits[static_cast<unsigned char>(character) / 16] +
         digits[static_cast<unsigned char>(character) % 16];
}

TEST(JsonWriterTest, EscapesWhatMustBeWhereverItStands) {
  for (int code = 0; code < 0x80; ++code) {
    const char character = static_cast<char>(code);
    for (std::size_t before = 0; before < 20; ++before) {
      for (const std::size_t after : {0U, 1U, 7U, 8U, 30U}) {
        const std::string head(before, 'a');
        const std::string tail(after, '~');
        EXPECT_EQ(written(head + character + tail), '"' + head + escaped(character) + tail + '"')
            << code << " behind " << before;
      }
    }
  }
}

TEST(JsonWriterTest, EscapesEachOfManyInARow) {
  EXPECT_EQ(written("\"\"\"\"\"\"\"\"\"\"\n"), R"("\"\"\"\"\"\"\"\"\"\"\n")");
}

TEST(JsonWriterTest, KeepsCharactersOfEveryLength) {
  for (const std::string character : {"\x7f", "é", "→", "𝄞", "\u0080", "\uffff", "\U0010ffff"}) {
    for (std::size_t before = 0; before < 10; ++before) {
      const std::string text =
          std::string(before, 'a') + character + "\"" + character + character + "tail of it";
      const std::string expected =
          std::string(before, 'a') + character + "\\\"" + character + character + "tail of it";
      EXPECT_EQ(written(text), '"' + expected + '"');
    }
  }
}

TEST(JsonWriterTest, RefusesWhatIsNotUtf8WhereverItStands) {
  const std::string_view wrong[] = {"\x80",         "\xff",     "\xc3",         "\xe2\x82",
                                    "\xf0\x9d\x84", "\xc0\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80"};
  for (const std::string_view bytes : wrong) {
    for (std::size_t before = 0; before < 10; ++before) {
      const std::string head = std::string(before, 'a') + std::string(bytes);
      EXPECT_EQ(written(head), std::nullopt);
      EXPECT_EQ(written(head + "and more behind it"), std::nullopt);
    }
  }
}

TEST(JsonWriterTest, WritesBehindWhatIsThere) {
  JsonWriter writer("start");
  writer.startArray();
  writer.base64("foob");
  writer.string("x");
  writer.endArray();
  std::string json;
  ASSERT_TRUE(writer.take(json));
  EXPECT_EQ(json, R"(start["Zm9vYg==","x"])");
}

}  // namespace
}  // namespace tarnix::tests
