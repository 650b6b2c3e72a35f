#include "probe/model/url.h"

#include <algorithm>
#include <cstddef>

#include "probe/model/utf8.h"

namespace tarnix {
namespace {

constexpr std::size_t escapeLength = 3;  // "%41"

constexpr bool isAlpha(char byte) {
  return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}
constexpr bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }
constexpr bool isHexDigit(char byte) {
  return isDigit(byte) || (byte >= 'a' && byte <= 'f') || (byte >= 'A' && byte <= 'F');
}
constexpr int hexValue(char digit) {
  return isDigit(digit) ? digit - '0' : (digit | 0x20) - 'a' + 10;
}

constexpr bool isSchemeCharacter(char byte) {
  return isAlpha(byte) || isDigit(byte) || byte == '+' || byte == '-' || byte == '.';
}

constexpr bool isUnescaped(char byte) {
  return isAlpha(byte) || isDigit(byte) ||
         std::string_view("-._~:/?#[]@!$&'()*+,;=").find(byte) != std::string_view::npos;
}

bool isEscape(std::string_view text) {
  return text.size() >= escapeLength && text[0] == '%' && isHexDigit(text[1]) &&
         isHexDigit(text[2]);
}

/// The first place in `text` of one of `characters`, which are few.
template <class... Characters>
std::size_t findAny(std::string_view text, Characters... characters) {
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (((text[position] == characters) || ...)) {
      return position;
    }
  }
  return std::string_view::npos;
}

std::optional<std::string_view> schemeOf(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && isSchemeCharacter(text[length])) {
    ++length;
  }
  const bool isScheme =
      length > 0 && length < text.size() && text[length] == ':' && isAlpha(text[0]);
  return isScheme ? std::optional(text.substr(0, length)) : std::nullopt;
}

struct Parts {
  std::optional<std::string_view> scheme;
  std::optional<std::string_view> authority;
  std::string_view path;
  /// From the question mark or number sign on.
  std::string_view rest;
};

Parts split(std::string_view text) {
  Parts parts;
  parts.scheme = schemeOf(text);
  if (parts.scheme) {
    text.remove_prefix(parts.scheme->size() + 1);
  }
  if (text.starts_with("//")) {
    text.remove_prefix(2);
    parts.authority = text.substr(0, findAny(text, '/', '?', '#'));
    text.remove_prefix(parts.authority->size());
  }
  parts.path = text.substr(0, findAny(text, '?', '#'));
  parts.rest = text.substr(parts.path.size());
  return parts;
}

/// The host as written, brackets included, and what follows it: nothing or a port with its colon.
struct HostAndPort {
  std::string_view host;
  std::string_view port;
};

HostAndPort splitAuthority(std::string_view authority) {
  const std::size_t userEnd = authority.rfind('@');
  if (userEnd != std::string_view::npos) {
    authority.remove_prefix(userEnd + 1);
  }
  const std::size_t addressEnd = authority.starts_with('[') ? authority.find(']') : 0;
  const std::size_t colon =
      addressEnd == std::string_view::npos ? addressEnd : authority.find(':', addressEnd);
  return {authority.substr(0, colon),
          colon == std::string_view::npos ? std::string_view() : authority.substr(colon)};
}

bool hasBrackets(std::string_view text) {
  return text.find_first_of("[]") != std::string_view::npos;
}

bool isAuthority(std::string_view authority) {
  const auto [host, port] = splitAuthority(authority);
  if (!port.empty() && !std::all_of(port.begin() + 1, port.end(), isDigit)) {
    return false;
  }
  const std::string_view user = authority.substr(0, authority.size() - host.size() - port.size());
  const bool isAddress = host.size() > 2 && host.front() == '[' && host.back() == ']';
  return !hasBrackets(user) && !hasBrackets(isAddress ? host.substr(1, host.size() - 2) : host);
}

void appendEscaped(std::string& text, char byte) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  const auto value = static_cast<unsigned char>(byte);
  text += '%';
  text += digits[value >> 4];
  text += digits[value & 0x0F];
}

std::string withoutEscapes(std::string_view text) {
  if (text.find('%') == std::string_view::npos) {
    return std::string(text);
  }
  std::string bytes;
  for (std::size_t position = 0; position < text.size();) {
    const std::string_view rest = text.substr(position);
    if (isEscape(rest)) {
      bytes += static_cast<char>(hexValue(rest[1]) * 16 + hexValue(rest[2]));
      position += escapeLength;
    } else {
      bytes += rest[0];
      ++position;
    }
  }
  std::string result;
  for (std::size_t position = 0; position < bytes.size();) {
    const std::size_t length = utf8::sequenceLength(bytes, position);
    if (length == 0) {
      appendEscaped(result, bytes[position]);
    } else {
      result.append(bytes, position, length);
    }
    position += std::max<std::size_t>(length, 1);
  }
  return result;
}

}  // namespace

std::optional<Url> Url::parse(std::string_view text) {
  if (text.empty()) {
    return std::nullopt;
  }
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (!isUnescaped(text[position]) && !isEscape(text.substr(position))) {
      return std::nullopt;
    }
  }
  const Parts parts = split(text);
  const std::size_t fragment = parts.rest.find('#');
  const bool hasSecondFragment = fragment != std::string_view::npos &&
                                 parts.rest.find('#', fragment + 1) != std::string_view::npos;
  // Without a scheme, a colon in the first segment would make one of what precedes it.
  const bool looksLikeScheme =
      !parts.scheme && !parts.authority &&
      parts.path.substr(0, parts.path.find('/')).find(':') != std::string_view::npos;
  if (hasSecondFragment || looksLikeScheme || hasBrackets(parts.path) || hasBrackets(parts.rest) ||
      (parts.authority && !isAuthority(*parts.authority))) {
    return std::nullopt;
  }
  return Url(std::string(text));
}

std::optional<std::string_view> Url::scheme() const { return schemeOf(absoluteString_); }

std::optional<std::string> Url::host() const {
  const Parts parts = split(absoluteString_);
  if (!parts.authority) {
    return std::nullopt;
  }
  std::string_view host = splitAuthority(*parts.authority).host;
  if (host.size() > 1 && host.front() == '[' && host.back() == ']') {
    host = host.substr(1, host.size() - 2);
  }
  return host.empty() ? std::nullopt : std::optional(withoutEscapes(host));
}

std::string Url::path() const { return withoutEscapes(split(absoluteString_).path); }

}  // namespace tarnix
