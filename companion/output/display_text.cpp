#include "companion/output/display_text.h"

#include <fmt/format.h>
#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <memory>

namespace tarnix::companion {
namespace {

constexpr std::string_view ellipsis = "…";

bool controlsTerminal(UChar32 character) {
  const int category = u_charType(character);
  return category == U_CONTROL_CHAR || category == U_LINE_SEPARATOR ||
         category == U_PARAGRAPH_SEPARATOR || u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL);
}

// ICU's macro narrows on purpose.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
/// Moves `index` behind the character that begins there; negative when that is not UTF-8.
UChar32 nextCharacter(std::string_view text, std::size_t& index) {
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  UChar32 character = 0;
  U8_NEXT(bytes, index, text.size(), character);
  return character;
}
#pragma GCC diagnostic pop

/// Calls `visit(character, bytes)` with each character; a byte that is not UTF-8 comes alone, with
/// a negative character.
template <class Visit>
void forEachCharacter(std::string_view text, Visit visit) {
  std::size_t index = 0;
  while (index < text.size()) {
    const std::size_t begin = index;
    const UChar32 character = nextCharacter(text, index);
    if (character < 0) {
      index = begin + 1;
    }
    visit(character, text.substr(begin, index - begin));
  }
}

std::string escaped(UChar32 character, std::string_view bytes) {
  switch (character) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  if (character < 0) {
    return fmt::format("\\x{:02X}", static_cast<unsigned char>(bytes.front()));
  }
  return character < 0x80 ? fmt::format("\\x{:02X}", static_cast<unsigned>(character))
                          : fmt::format("\\u{:04X}", static_cast<unsigned>(character));
}

bool isWide(UChar32 character) {
  const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
  return width == U_EA_WIDE || width == U_EA_FULLWIDTH ||
         u_hasBinaryProperty(character, UCHAR_EMOJI_PRESENTATION);
}

bool isInvisible(UChar32 character) {
  const int category = u_charType(character);
  return category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK ||
         category == U_FORMAT_CHAR;
}

/// Of one character as a person sees it, whatever it is made of.
std::size_t clusterWidth(std::string_view cluster) {
  constexpr UChar32 emojiStyle = 0xFE0F;
  std::size_t width = 0;
  forEachCharacter(cluster, [&](UChar32 character, std::string_view) {
    if (character == emojiStyle && width > 0) {
      width = 2;
    } else if (width == 0 && (character < 0 || !isInvisible(character))) {
      width = character >= 0 && isWide(character) ? 2 : 1;
    }
  });
  return width;
}

struct TextDeleter {
  void operator()(UText* text) const { utext_close(text); }
};

/// Calls `visit(cluster, end)` with each character as a person sees it, and the byte at which it
/// ends, until `visit` answers with false.
template <class Visit>
void forEachCluster(std::string_view text, Visit visit) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UText, TextDeleter> source(
      utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
  const std::unique_ptr<icu::BreakIterator> breaks(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  if (U_FAILURE(status)) {
    return;
  }
  breaks->setText(source.get(), status);
  std::size_t begin = 0;
  for (std::int32_t next = breaks->next(); next != icu::BreakIterator::DONE;
       next = breaks->next()) {
    const auto end = static_cast<std::size_t>(next);
    if (!visit(text.substr(begin, end - begin), end)) {
      return;
    }
    begin = end;
  }
}

}  // namespace

std::string printable(std::string_view text, KeptControls kept) {
  std::string result;
  result.reserve(text.size());
  forEachCharacter(text, [&](UChar32 character, std::string_view bytes) {
    const bool isKept = character == '\n' && kept == KeptControls::lineFeeds;
    if (character < 0 || (controlsTerminal(character) && !isKept)) {
      result += escaped(character, bytes);
    } else {
      result += bytes;
    }
  });
  return result;
}

std::string printableJson(std::string_view json) {
  std::string result;
  result.reserve(json.size());
  forEachCharacter(json, [&](UChar32 character, std::string_view bytes) {
    if (character >= 0x7F && controlsTerminal(character)) {
      result += fmt::format("\\u{:04x}", static_cast<unsigned>(character));
    } else {
      result += bytes;
    }
  });
  return result;
}

std::size_t displayWidth(std::string_view text) {
  std::size_t width = 0;
  forEachCluster(text, [&](std::string_view cluster, std::size_t) {
    width += clusterWidth(cluster);
    return true;
  });
  return width;
}

std::string cutToWidth(std::string_view text, std::size_t width) {
  std::size_t used = 0;
  std::size_t cut = 0;
  bool fits = true;
  forEachCluster(text, [&](std::string_view cluster, std::size_t end) {
    used += clusterWidth(cluster);
    // The ellipsis needs a column of its own.
    if (used + 1 <= width) {
      cut = end;
    }
    fits = used <= width;
    return fits;
  });
  if (fits) {
    return std::string(text);
  }
  return width == 0 ? std::string() : std::string(text.substr(0, cut)) + std::string(ellipsis);
}

}  // namespace tarnix::companion
