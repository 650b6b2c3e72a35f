#include "probe/model/utf8.h"

#include <cstdint>
#include <cstring>

namespace tarnix::utf8 {
namespace {

constexpr unsigned byteAt(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

/// How many bytes from `position` on are ASCII; eight at a time, since nearly all text is.
std::size_t asciiRun(std::string_view text, std::size_t position) {
  const std::size_t begin = position;
  for (; position + 8 <= text.size(); position += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + position, sizeof word);
    if ((word & 0x8080'8080'8080'8080) != 0) {
      break;
    }
  }
  while (position < text.size() && byteAt(text, position) < 0x80) {
    ++position;
  }
  return position - begin;
}

}  // namespace

std::size_t sequenceLength(std::string_view text, std::size_t position) {
  const unsigned lead = byteAt(text, position);
  if (lead < 0x80) {
    return 1;
  }
  std::size_t length = 0;
  // What the second byte may be depends on the first: that rules out overlong forms, surrogates and
  // what lies beyond the last character.
  unsigned secondLow = 0x80;
  unsigned secondHigh = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    secondLow = lead == 0xE0 ? 0xA0 : 0x80;
    secondHigh = lead == 0xED ? 0x9F : 0xBF;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    secondLow = lead == 0xF0 ? 0x90 : 0x80;
    secondHigh = lead == 0xF4 ? 0x8F : 0xBF;
  }
  if (length == 0 || position + length > text.size() || byteAt(text, position + 1) < secondLow ||
      byteAt(text, position + 1) > secondHigh) {
    return 0;
  }
  for (std::size_t index = 2; index < length; ++index) {
    if ((byteAt(text, position + index) & 0xC0) != 0x80) {
      return 0;
    }
  }
  return length;
}

bool isWellFormed(std::string_view text) {
  std::size_t position = asciiRun(text, 0);
  while (position < text.size()) {
    const std::size_t length = sequenceLength(text, position);
    if (length == 0) {
      return false;
    }
    position += length;
    position += asciiRun(text, position);
  }
  return true;
}

std::string wellFormed(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t ascii = asciiRun(text, position);
    result += text.substr(position, ascii);
    position += ascii;
    if (position == text.size()) {
      break;
    }
    const std::size_t length = sequenceLength(text, position);
    result += length == 0 ? std::string_view("\xEF\xBF\xBD") : text.substr(position, length);
    position += length == 0 ? 1 : length;
  }
  return result;
}

char32_t next(std::string_view text, std::size_t& position) {
  const unsigned lead = byteAt(text, position);
  ++position;
  if (lead < 0x80) {
    return lead;
  }
  const std::size_t following = lead < 0xE0 ? 1U : lead < 0xF0 ? 2U : 3U;
  char32_t character = lead & (0x3FU >> following);
  for (std::size_t index = 0; index < following; ++index, ++position) {
    character = character << 6 | (byteAt(text, position) & 0x3FU);
  }
  return character;
}

}  // namespace tarnix::utf8
