#include "probe/capture/log_line.h"

#include <array>
#include <cstddef>
#include <optional>
#include <utility>

#include "probe/model/utf8.h"
#include "probe/platform/characters.h"

namespace tarnix {
namespace {

constexpr std::string_view defaultLevel = "DEBUG";
constexpr std::string_view defaultCategory = "app";

constexpr std::array<std::pair<std::string_view, std::string_view>, 11> levels = {{
    {"DEBUG", "DEBUG"},
    {"TRACE", "DEBUG"},
    {"VERBOSE", "DEBUG"},
    {"INFO", "INFO"},
    {"NOTICE", "INFO"},
    {"WARN", "WARN"},
    {"WARNING", "WARN"},
    {"ERROR", "ERROR"},
    {"ERR", "ERROR"},
    {"CRITICAL", "ERROR"},
    {"FAULT", "ERROR"},
}};
constexpr std::size_t longestLevel = 8;

constexpr bool isAsciiWord(char32_t character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || character == '_';
}
bool isWord(char32_t character) {
  return character < 0x80 ? isAsciiWord(character) : platform::isWordCharacter(character);
}
bool isWordOrDot(char32_t character) { return character == '.' || isWord(character); }
bool isSpace(char32_t character) {
  return character < 0x80 ? character == ' ' || (character >= '\t' && character <= '\r')
                          : platform::isWhiteSpace(character);
}
constexpr bool isInsideLine(char32_t character) {
  return !(character >= '\n' && character <= '\r') && character != 0x85 && character != 0x2028 &&
         character != 0x2029;
}

/// Where the run of such characters ends that begins at `position`. No class here overlaps with
/// what an expression asks for behind it, so the longest run is the one that matches.
template <class Class>
std::size_t endOfRun(std::string_view line, std::size_t position, Class isMember) {
  while (position < line.size()) {
    std::size_t behind = position;
    if (!isMember(utf8::next(line, behind))) {
      break;
    }
    position = behind;
  }
  return position;
}

bool hasByteAt(std::string_view line, std::size_t position, char byte) {
  return position < line.size() && line[position] == byte;
}

/// What `\s*(.*)` captures at `position`: up to the end of the line, or to a character that ends
/// lines elsewhere, such as the carriage return before a line feed.
std::string_view messageAt(std::string_view line, std::size_t position) {
  const std::size_t begin = endOfRun(line, position, isSpace);
  return line.substr(begin, endOfRun(line, begin, isInsideLine) - begin);
}

struct BracketedWord {
  std::string_view word;
  /// Behind the closing bracket.
  std::size_t end;
};

/// What `\[(\w+)\]` matches at the bracket at `position`.
std::optional<BracketedWord> bracketedWordAt(std::string_view line, std::size_t position) {
  const std::size_t begin = position + 1;
  const std::size_t end = endOfRun(line, begin, isWord);
  if (end == begin || !hasByteAt(line, end, ']')) {
    return std::nullopt;
  }
  return BracketedWord{line.substr(begin, end - begin), end + 1};
}

/// `word` in full Unicode upper case, as far as the result is made of ASCII letters. Two characters
/// beyond ASCII have such an upper case and occur in it alone: the dotless i and the long s.
std::optional<char> upperCaseLetter(char32_t character) {
  constexpr char32_t dotlessI = 0x131;
  constexpr char32_t longS = 0x17F;
  if (character >= 'a' && character <= 'z') {
    return static_cast<char>(character - 'a' + 'A');
  }
  if (character == dotlessI) {
    return 'I';
  }
  if (character == longS) {
    return 'S';
  }
  return character < 0x80 ? std::optional(static_cast<char>(character)) : std::nullopt;
}

}  // namespace

std::string_view normalizeLevel(std::string_view word) {
  std::array<char, longestLevel> upperCased{};
  std::size_t length = 0;
  for (std::size_t position = 0; position < word.size();) {
    const std::optional<char> letter = upperCaseLetter(utf8::next(word, position));
    if (!letter || length == upperCased.size()) {
      return defaultLevel;
    }
    upperCased[length] = *letter;
    ++length;
  }
  for (const auto& [name, level] : levels) {
    if (name == std::string_view(upperCased.data(), length)) {
      return level;
    }
  }
  return defaultLevel;
}

LogLine LogLine::parse(std::string_view line) {
  std::optional<BracketedWord> firstWord;
  for (std::size_t bracket = line.find('['); bracket != std::string_view::npos;
       bracket = line.find('[', bracket + 1)) {
    const std::optional<BracketedWord> word = bracketedWordAt(line, bracket);
    if (!word) {
      continue;
    }
    const std::size_t begin = endOfRun(line, word->end, isSpace);
    const std::size_t end = endOfRun(line, begin, isWordOrDot);
    if (end > begin && hasByteAt(line, end, ':')) {
      return {normalizeLevel(word->word), line.substr(begin, end - begin),
              messageAt(line, end + 1)};
    }
    if (!firstWord) {
      firstWord = word;
    }
  }
  if (firstWord) {
    return {normalizeLevel(firstWord->word), defaultCategory, messageAt(line, firstWord->end)};
  }
  return {defaultLevel, defaultCategory, line};
}

}  // namespace tarnix
