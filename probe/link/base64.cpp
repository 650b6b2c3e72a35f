#include "probe/link/base64.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "probe/link/wide_base64.h"

namespace tarnix {
namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Twelve bits at a time: half the look-ups, in a table that stays in the first-level cache.
constexpr auto pairs = [] {
  std::array<std::array<char, 2>, 4096> table{};
  for (std::size_t bits = 0; bits < table.size(); ++bits) {
    table[bits] = {alphabet[bits >> 6], alphabet[bits & 63]};
  }
  return table;
}();

// Text is made in blocks that stay in the first-level cache until they are copied to their place:
// a string cannot grow without writing something first.
constexpr std::size_t blockBytes = 3072;

constexpr std::uint8_t notInAlphabet = 0x80;
constexpr auto sextets = [] {
  std::array<std::uint8_t, 256> table{};
  table.fill(notInAlphabet);
  for (std::size_t value = 0; value < alphabet.size(); ++value) {
    table[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
  }
  return table;
}();

std::uint32_t byteAt(std::string_view bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

std::uint32_t sextetAt(std::string_view text, std::size_t index) {
  return sextets[static_cast<unsigned char>(text[index])];
}

/// The last group is filled up with '='.
void encodeGroups(std::string_view bytes, char* out) {
  std::size_t index = 0;
  for (; index + 3 <= bytes.size(); index += 3) {
    const std::uint32_t group =
        byteAt(bytes, index) << 16 | byteAt(bytes, index + 1) << 8 | byteAt(bytes, index + 2);
    std::memcpy(out, pairs[group >> 12].data(), 2);
    std::memcpy(out + 2, pairs[group & 0xFFF].data(), 2);
    out += 4;
  }
  const std::size_t rest = bytes.size() - index;
  if (rest > 0) {
    const std::uint32_t group =
        byteAt(bytes, index) << 16 | (rest == 2 ? byteAt(bytes, index + 1) << 8 : 0);
    out[0] = alphabet[group >> 18];
    out[1] = alphabet[group >> 12 & 63];
    out[2] = rest == 2 ? alphabet[group >> 6 & 63] : '=';
    out[3] = '=';
  }
}

}  // namespace

std::string encodeBase64(std::string_view bytes) {
  std::string text;
  text.reserve(base64Size(bytes.size()));
  appendBase64(bytes, text);
  return text;
}

void appendBase64(std::string_view bytes, std::string& text) {
  std::array<char, base64Size(blockBytes)> block;
  while (!bytes.empty()) {
    const std::string_view taken = bytes.substr(0, blockBytes);
    const std::size_t done = encodeWideBase64(taken, block.data());
    encodeGroups(taken.substr(done), block.data() + base64Size(done));
    text.append(block.data(), base64Size(taken.size()));
    bytes.remove_prefix(taken.size());
  }
}

std::optional<std::string> decodeBase64(std::string_view text) {
  if (text.size() % 4 != 0) {
    return std::nullopt;
  }
  std::size_t padding = 0;
  while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == '=') {
    ++padding;
  }
  std::string bytes(text.size() / 4 * 3, '\0');
  char* out = bytes.data();
  const std::size_t whole = padding == 0 ? text.size() : text.size() - 4;
  for (std::size_t index = 0; index < whole; index += 4) {
    const std::uint32_t a = sextetAt(text, index);
    const std::uint32_t b = sextetAt(text, index + 1);
    const std::uint32_t c = sextetAt(text, index + 2);
    const std::uint32_t d = sextetAt(text, index + 3);
    if (((a | b | c | d) & notInAlphabet) != 0) {
      return std::nullopt;
    }
    const std::uint32_t group = a << 18 | b << 12 | c << 6 | d;
    *out++ = static_cast<char>(group >> 16);
    *out++ = static_cast<char>(group >> 8);
    *out++ = static_cast<char>(group);
  }
  if (padding > 0) {
    const std::uint32_t a = sextetAt(text, whole);
    const std::uint32_t b = sextetAt(text, whole + 1);
    const std::uint32_t c = padding == 1 ? sextetAt(text, whole + 2) : 0;
    if (((a | b | c) & notInAlphabet) != 0) {
      return std::nullopt;
    }
    const std::uint32_t group = a << 18 | b << 12 | c << 6;
    *out++ = static_cast<char>(group >> 16);
    if (padding == 1) {
      *out++ = static_cast<char>(group >> 8);
    }
    bytes.resize(bytes.size() - padding);
  }
  return bytes;
}

}  // namespace tarnix
