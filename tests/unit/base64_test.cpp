#include "probe/link/base64.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace tarnix::tests {
namespace {

const std::vector<std::pair<std::string, std::string>> pairs = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {"{}", "e30="},
    {std::string("\0", 1), "AA=="},
    {"\xff\xff\xff", "////"},
    {"\xfb\xef\xbe", "++++"},
};

TEST(Base64, WritesWithPadding) {
  for (const auto& [bytes, text] : pairs) {
    EXPECT_EQ(encodeBase64(bytes), text);
  }
}

TEST(Base64, ReadsWhatItWrites) {
  for (const auto& [bytes, text] : pairs) {
    EXPECT_EQ(decodeBase64(text), bytes);
  }
}

TEST(Base64, GoesThereAndBackForEveryLengthAndByte) {
  std::string bytes;
  for (int length = 0; length < 600; ++length) {
    EXPECT_EQ(decodeBase64(encodeBase64(bytes)), bytes) << length;
    bytes.push_back(static_cast<char>(length * 7 + length / 256));
  }
}

TEST(Base64, RefusesEverythingElse) {
  for (const char* text : {"Zg",
                           "Zg=",
                           "Zg===",
                           "Z",
                           "Zm9",
                           "Zm9v\n",
                           "Zm9v Zm9v",
                           "Zm8=Zm8=",
                           "=",
                           "==",
                           "====",
                           "A===",
                           "=AAA",
                           "A=AA",
                           "AA=A",
                           "Zm-v",
                           "Zm_v",
                           "Zm9\x80",
                           "\xff\xff\xff\xff",
                           "e30=\n"}) {
    EXPECT_EQ(decodeBase64(text), std::nullopt) << text;
  }
  EXPECT_EQ(decodeBase64(std::string_view("Zm9\0", 4)), std::nullopt);
}

}  // namespace
}  // namespace tarnix::tests
