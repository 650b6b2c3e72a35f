#include "probe/platform/text.h"

#include <unicode/ubrk.h>
#include <unicode/ucasemap.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <mutex>

namespace tarnix::platform {

namespace {

constexpr bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

/// What ICU can be given at once: it counts in 32-bit integers.
constexpr std::size_t maximumPieceSize = 0x4000'0000;

constexpr UChar32 replacementCharacter = 0xFFFD;
constexpr std::string_view replacementBytes = "\xEF\xBF\xBD";

/// One break iterator for the process: making one costs more than most texts do. It is never
/// closed, since threads of the host may still run while the process ends.
class ClusterBreaker {
 public:
  static ClusterBreaker& shared() {
    static ClusterBreaker& instance = *new ClusterBreaker;
    return instance;
  }

  /// Walks over at most `count` clusters of `text`, which starts at a cluster's start. Returns the
  /// length that they have in bytes and takes their number off `count`.
  std::size_t advance(std::string_view text, std::size_t& count) {
    const std::string_view piece = text.substr(0, maximumPieceSize);
    const std::lock_guard lock(mutex_);
    if (!setText(piece)) {
      return advanceByCodePoint(piece, count);
    }
    std::size_t length = 0;
    while (count > 0 && length < piece.size()) {
      const std::int32_t boundary = ubrk_next(iterator_);
      length = boundary == UBRK_DONE ? piece.size() : static_cast<std::size_t>(boundary);
      --count;
    }
    return length;
  }

 private:
  ClusterBreaker() {
    UErrorCode error = U_ZERO_ERROR;
    iterator_ = ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &error);
  }

  bool setText(std::string_view piece) {
    UErrorCode error = U_ZERO_ERROR;
    utext_openUTF8(&text_, piece.data(), static_cast<std::int64_t>(piece.size()), &error);
    if (iterator_ != nullptr) {
      ubrk_setUText(iterator_, &text_, &error);
    }
    return iterator_ != nullptr && U_SUCCESS(error);
  }

  /// The nearest there is when ICU's data files are missing: every byte that starts a sequence
  /// counts.
  static std::size_t advanceByCodePoint(std::string_view text, std::size_t& count) {
    std::size_t length = 0;
    while (count > 0 && length < text.size()) {
      do {
        ++length;
      } while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80);
      --count;
    }
    return length;
  }

  std::mutex mutex_;
  UBreakIterator* iterator_ = nullptr;
  UText text_ = UTEXT_INITIALIZER;
};

/// The length in bytes of the first `count` clusters of `text`; what is left of `count` when the
/// text has fewer stays in it.
std::size_t clusterPrefix(std::string_view text, std::size_t& count) {
  std::size_t position = 0;
  while (count > 0 && position < text.size()) {
    // Two ASCII characters in a row always have a boundary between them, but for CR LF. The last
    // one before other text may be the base of a combining mark, so it goes the long way.
    const bool nextIsAscii = position + 1 == text.size() || isAscii(text[position + 1]);
    if (!isAscii(text[position]) || !nextIsAscii) {
      position += ClusterBreaker::shared().advance(text.substr(position), count);
      continue;
    }
    position += text.substr(position, 2) == "\r\n" ? 2U : 1U;
    --count;
  }
  return position;
}

/// Never closed, for the reason above. Null when ICU has no data.
const UCaseMap* rootCaseMap() {
  static const UCaseMap* const map = [] {
    UErrorCode error = U_ZERO_ERROR;
    return ucasemap_open("", 0, &error);
  }();
  return map;
}

/// `text` with U+FFFD in place of what is not UTF-8.
std::string wellFormed(std::string_view text) {
  UText characters = UTEXT_INITIALIZER;
  UErrorCode error = U_ZERO_ERROR;
  utext_openUTF8(&characters, text.data(), static_cast<std::int64_t>(text.size()), &error);
  std::string result;
  result.reserve(text.size());
  std::int64_t begin = 0;
  for (UChar32 character = 0; (character = utext_next32(&characters)) != U_SENTINEL;) {
    const std::int64_t end = utext_getNativeIndex(&characters);
    const std::string_view bytes =
        text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    result += character == replacementCharacter ? replacementBytes : bytes;
    begin = end;
  }
  utext_close(&characters);
  return result;
}

char lowercasedAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

char uppercasedAscii(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

/// One direction of case mapping: what ICU offers for it, and what serves for ASCII.
struct CaseMapping {
  std::int32_t (*map)(const UCaseMap*, char*, std::int32_t, const char*, std::int32_t, UErrorCode*);
  char (*mapAscii)(char);
};

std::string mappedAscii(std::string_view text, const CaseMapping& mapping) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), mapping.mapAscii);
  return result;
}

std::string mapped(std::string_view text, const CaseMapping& mapping) {
  if (std::all_of(text.begin(), text.end(), isAscii) || rootCaseMap() == nullptr ||
      text.size() > maximumPieceSize) {
    return mappedAscii(text, mapping);
  }
  const std::string source = wellFormed(text);
  std::string result(source.size() + 16, '\0');
  // Some characters grow in the other case: the second turn has the size that the first needed.
  for (int turn = 0; turn < 2; ++turn) {
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t size =
        mapping.map(rootCaseMap(), result.data(), static_cast<std::int32_t>(result.size()),
                    source.data(), static_cast<std::int32_t>(source.size()), &error);
    if (error == U_BUFFER_OVERFLOW_ERROR) {
      result.resize(static_cast<std::size_t>(size));
      continue;
    }
    if (U_FAILURE(error)) {
      break;
    }
    result.resize(static_cast<std::size_t>(size));
    return result;
  }
  return mappedAscii(source, mapping);
}

}  // namespace

bool hasMoreCharacters(std::string_view text, std::size_t limit) {
  // A character takes at least one byte.
  return text.size() > limit && clusterPrefix(text, limit) < text.size();
}

std::size_t characterCount(std::string_view text) {
  // As many as there could be: what the walk leaves of them is not there.
  std::size_t missing = text.size();
  clusterPrefix(text, missing);
  return text.size() - missing;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  return text.substr(0, clusterPrefix(text, count));
}

std::string lowercased(std::string_view text) {
  return mapped(text, {ucasemap_utf8ToLower, lowercasedAscii});
}

std::string uppercased(std::string_view text) {
  return mapped(text, {ucasemap_utf8ToUpper, uppercasedAscii});
}

}  // namespace tarnix::platform
