#include "probe/model/uuid.h"

#include <cstddef>
#include <random>

namespace tarnix {
namespace {

constexpr std::size_t textLength = 36;
constexpr std::string_view upperCaseDigits = "0123456789ABCDEF";

constexpr bool isHyphenPosition(std::size_t position) {
  return position == 8 || position == 13 || position == 18 || position == 23;
}

std::optional<unsigned> digitValue(char digit) {
  if (digit >= '0' && digit <= '9') {
    return static_cast<unsigned>(digit - '0');
  }
  if (digit >= 'A' && digit <= 'F') {
    return static_cast<unsigned>(digit - 'A' + 10);
  }
  if (digit >= 'a' && digit <= 'f') {
    return static_cast<unsigned>(digit - 'a' + 10);
  }
  return std::nullopt;
}

std::mt19937_64 seededGenerator() {
  std::random_device entropy;
  std::seed_seq seed{entropy(), entropy(), entropy(), entropy(), entropy(), entropy()};
  return std::mt19937_64(seed);
}

}  // namespace

Uuid Uuid::random() {
  // Seeded once a thread: asking the system for each identifier would cost every log line a call.
  thread_local std::mt19937_64 generator = seededGenerator();
  Uuid uuid;
  for (std::size_t half = 0; half < 2; ++half) {
    const std::uint64_t bits = generator();
    for (std::size_t index = 0; index < 8; ++index) {
      uuid.bytes_[half * 8 + index] = static_cast<std::uint8_t>(bits >> (index * 8));
    }
  }
  uuid.bytes_[6] = static_cast<std::uint8_t>((uuid.bytes_[6] & 0x0F) | 0x40);  // version 4
  uuid.bytes_[8] = static_cast<std::uint8_t>((uuid.bytes_[8] & 0x3F) | 0x80);  // RFC 4122 variant
  return uuid;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
  if (text.size() != textLength) {
    return std::nullopt;
  }
  Uuid uuid;
  std::size_t digits = 0;
  for (std::size_t position = 0; position < textLength; ++position) {
    if (isHyphenPosition(position)) {
      if (text[position] != '-') {
        return std::nullopt;
      }
      continue;
    }
    const std::optional<unsigned> value = digitValue(text[position]);
    if (!value) {
      return std::nullopt;
    }
    std::uint8_t& byte = uuid.bytes_[digits / 2];
    byte = static_cast<std::uint8_t>(byte * 16U + *value);
    ++digits;
  }
  return uuid;
}

std::string Uuid::toString() const {
  std::string text;
  text.reserve(textLength);
  for (const std::uint8_t byte : bytes_) {
    if (isHyphenPosition(text.size())) {
      text.push_back('-');
    }
    text.push_back(upperCaseDigits[byte >> 4]);
    text.push_back(upperCaseDigits[byte & 0x0F]);
  }
  return text;
}

}  // namespace tarnix
