#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace tarnix {

/// A read-only look at one value inside a `JsonDocument`, valid while the document lives.
/// Each accessor answers with nothing when the value is of another kind.
class JsonValue {
 public:
  /// The member of that name; nothing when this is no object, has no such member, or has it as
  /// null: an absent and a null member mean the same to every record.
  std::optional<JsonValue> member(std::string_view name) const;

  bool isObject() const;
  std::optional<std::string_view> string() const;
  std::optional<bool> boolean() const;
  /// Also a number written with a fraction or exponent, when it is a whole one in range.
  std::optional<std::int64_t> integer() const;
  std::optional<std::uint64_t> unsignedInteger() const;
  std::optional<double> number() const;

  /// Elements of an array; nothing when this is none.
  std::optional<std::size_t> arraySize() const;
  /// `index` is below the array's size.
  JsonValue element(std::size_t index) const;

  /// Members of an object; nothing when this is none.
  std::optional<std::size_t> memberCount() const;
  /// `index` is below the object's member count.
  std::string_view memberName(std::size_t index) const;
  JsonValue memberValue(std::size_t index) const;

 private:
  friend class JsonDocument;
  explicit JsonValue(const void* value) : value_(value) {}

  const void* value_;
};

/// A parsed JSON text. Neither parsing nor destruction recurses, so a text of a million opening
/// brackets costs a peer its frame and nothing else.
class JsonDocument {
 public:
  /// Nothing when `text` is not one JSON value in UTF-8, white space around it allowed.
  static std::optional<JsonDocument> parse(std::string_view text);

  JsonDocument(JsonDocument&&) noexcept;
  JsonDocument& operator=(JsonDocument&&) noexcept;
  ~JsonDocument();

  JsonValue root() const;

 private:
  struct Implementation;
  explicit JsonDocument(std::unique_ptr<Implementation> implementation);

  std::unique_ptr<Implementation> implementation_;
};

}  // namespace tarnix
