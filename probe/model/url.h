#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnix {

/// A URL reference of RFC 3986: its text, and the parts that are asked for.
class Url {
 public:
  /// Nothing when `text` is empty, has a character that a URL must escape, an incomplete escape, or
  /// parts that do not fit together such as a port that is no number.
  static std::optional<Url> parse(std::string_view text);

  /// For text that a platform's own URL type wrote: taken as it is.
  explicit Url(std::string absoluteString) : absoluteString_(std::move(absoluteString)) {}

  const std::string& absoluteString() const { return absoluteString_; }

  /// As written, without the colon; absent in a relative reference.
  std::optional<std::string_view> scheme() const;

  /// Escapes resolved, without user, port and the brackets of an IPv6 address. Absent when there is
  /// none or it is empty.
  std::optional<std::string> host() const;

  /// Escapes resolved; bytes that are not UTF-8 then are left escaped. May be empty.
  std::string path() const;

  bool operator==(const Url&) const = default;

 private:
  std::string absoluteString_;
};

}  // namespace tarnix
