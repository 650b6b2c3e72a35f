#include "probe/platform/characters.h"

#include <unicode/uchar.h>

namespace tarnix::platform {

bool isWordCharacter(char32_t character) {
  constexpr char32_t zeroWidthNonJoiner = 0x200C;
  constexpr char32_t zeroWidthJoiner = 0x200D;
  const auto codePoint = static_cast<UChar32>(character);
  return u_hasBinaryProperty(codePoint, UCHAR_ALPHABETIC) != 0 ||
         (U_GET_GC_MASK(codePoint) & (U_GC_M_MASK | U_GC_ND_MASK | U_GC_PC_MASK)) != 0 ||
         character == zeroWidthNonJoiner || character == zeroWidthJoiner;
}

bool isWhiteSpace(char32_t character) {
  return u_isUWhiteSpace(static_cast<UChar32>(character)) != 0;
}

bool isUpperCase(char32_t character) {
  return u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_UPPERCASE) != 0;
}

bool isLowerCase(char32_t character) {
  return u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_LOWERCASE) != 0;
}

}  // namespace tarnix::platform
