#include "probe/model/mime_type.h"

#include <algorithm>
#include <cstddef>

namespace tarnix {
namespace {

constexpr std::string_view blanks = " \t\r\n";

constexpr char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

}  // namespace

std::optional<std::string> mimeTypeIn(std::string_view contentType) {
  contentType = contentType.substr(0, contentType.find(';'));
  const std::size_t begin = contentType.find_first_not_of(blanks);
  if (begin == std::string_view::npos) {
    return std::nullopt;
  }
  return std::string(contentType.substr(begin, contentType.find_last_not_of(blanks) - begin + 1));
}

bool isSameHeaderName(std::string_view left, std::string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char one, char other) { return lowerCase(one) == lowerCase(other); });
}

}  // namespace tarnix
