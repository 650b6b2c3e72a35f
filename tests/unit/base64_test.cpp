#include "probe/link/base64.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
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

/// One group after the other, as the standard has it.
std::string plainlyEncoded(const std::string& bytes) {
  const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t index = 0; index < bytes.size(); index += 3) {
    unsigned group = 0;
    for (std::size_t place = index; place < index + 3; ++place) {
      group = group << 8 | (place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U);
    }
    const std::size_t characters = std::min<std::size_t>(bytes.size() - index, 3) + 1;
    for (std::size_t place = 0; place < 4; ++place) {
      text += place < characters ? alphabet[group >> (18 - 6 * place) & 63] : '=';
    }
  }
  return text;
}

TEST(Base64, WritesLongTextsAsItWritesShortOnes) {
  // Around the sizes of what is done at once.
  std::mt19937 generator(7);
  for (const std::size_t middle : {24U, 28U, 48U, 3072U, 6144U, 65'536U}) {
    for (std::size_t size = middle - 4; size <= middle + 4; ++size) {
      std::string bytes(size, '\0');
      for (char& byte : bytes) {
        byte = static_cast<char>(generator());
      }
      EXPECT_EQ(encodeBase64(bytes), plainlyEncoded(bytes)) << size;
    }
  }
}

TEST(Base64, WritesEveryCharacterInEveryPlace) {
  // Each of the six-bit values in a row of one value only.
  for (unsigned value = 0; value < 64; ++value) {
    const unsigned group = value << 18 | value << 12 | value << 6 | value;
    std::string bytes;
    for (int repetition = 0; repetition < 40; ++repetition) {
      bytes +=
          {static_cast<char>(group >> 16), static_cast<char>(group >> 8), static_cast<char>(group)};
    }
    EXPECT_EQ(encodeBase64(bytes), plainlyEncoded(bytes)) << value;
  }
}

TEST(Base64, WritesBehindWhatIsThere) {
  std::string text = "start ";
  appendBase64("foob", text);
  EXPECT_EQ(text, "start Zm9vYg==");
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
