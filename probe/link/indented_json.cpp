#include "probe/link/indented_json.h"

#include <algorithm>
#include <cstddef>

namespace tarnix {
namespace {

/// The length of the string literal that `json` begins with.
std::size_t literalLength(std::string_view json) {
  std::size_t position = 1;
  while (position < json.size() && json[position] != '"') {
    position += json[position] == '\\' ? 2U : 1U;
  }
  return position + 1;
}

void startLine(std::string& text, std::size_t level) {
  text += '\n';
  text.append(level * 2, ' ');
}

}  // namespace

std::string indentedJson(std::string_view json) {
  std::string text;
  std::size_t level = 0;
  while (!json.empty()) {
    const char token = json.front();
    const std::size_t length = token == '"' ? literalLength(json) : 1;
    const bool isClosing = token == '}' || token == ']';
    const bool isOpening = token == '{' || token == '[';
    if (isClosing) {
      --level;
      if (text.back() != '{' && text.back() != '[') {
        startLine(text, level);
      }
    } else if (!text.empty() && (text.back() == '{' || text.back() == '[')) {
      startLine(text, level);
    }
    text += json.substr(0, length);
    json.remove_prefix(std::min(length, json.size()));
    level += isOpening ? 1U : 0U;
    if (token == ',') {
      startLine(text, level);
    } else if (token == ':') {
      text += ' ';
    }
  }
  return text;
}

}  // namespace tarnix
