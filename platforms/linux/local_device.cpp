#include "platforms/linux/local_device.h"

#include <unistd.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <string_view>

namespace tarnix::linux_platform {

namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string_view::npos) {
    return {};
  }
  return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

/// A word as a shell reads it: quotes of both kinds, and backslashes outside of single quotes.
std::string unquoted(std::string_view word) {
  std::string result;
  char quote = '\0';
  for (std::size_t index = 0; index < word.size(); ++index) {
    const char character = word[index];
    if (character == quote) {
      quote = '\0';
    } else if (quote == '\0' && (character == '"' || character == '\'')) {
      quote = character;
    } else if (character == '\\' && quote != '\'' && index + 1 < word.size()) {
      result += word[++index];
    } else {
      result += character;
    }
  }
  return result;
}

/// How many bytes the character has that starts with `lead`; 0 when none does.
std::size_t sequenceSize(unsigned char lead) {
  if (lead < 0x80) {
    return 1;
  }
  if (lead >= 0xC2 && lead < 0xE0) {
    return 2;
  }
  if (lead >= 0xE0 && lead < 0xF0) {
    return 3;
  }
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const unsigned char lead = static_cast<unsigned char>(text[0]);
    const std::size_t size = sequenceSize(lead);
    if (size == 0 || size > text.size()) {
      return false;
    }
    for (std::size_t index = 1; index < size; ++index) {
      const unsigned char byte = static_cast<unsigned char>(text[index]);
      if ((byte & 0xC0) != 0x80) {
        return false;
      }
      // Overlong forms, surrogates, and what lies above the last code point.
      if (index == 1 && ((lead == 0xE0 && byte < 0xA0) || (lead == 0xED && byte > 0x9F) ||
                         (lead == 0xF0 && byte < 0x90) || (lead == 0xF4 && byte > 0x8F))) {
        return false;
      }
    }
    text.remove_prefix(size);
  }
  return true;
}

}  // namespace

std::string prettyHostName(std::istream& machineInfo) {
  constexpr std::string_view key = "PRETTY_HOSTNAME=";
  std::string result;
  std::string line;
  while (std::getline(machineInfo, line)) {
    const std::string_view assignment = trimmed(line);
    if (assignment.substr(0, key.size()) == key) {
      // The last one counts, as in a shell.
      result = trimmed(unquoted(assignment.substr(key.size())));
    }
  }
  return isUtf8(result) ? result : std::string();
}

std::string LocalDevice::name() const {
  std::ifstream machineInfo("/etc/machine-info");
  if (std::string pretty = prettyHostName(machineInfo); !pretty.empty()) {
    return pretty;
  }
  std::array<char, 256> name{};
  if (::gethostname(name.data(), name.size() - 1) == 0 && name[0] != '\0' && isUtf8(name.data())) {
    return name.data();
  }
  return "localhost";
}

}  // namespace tarnix::linux_platform
