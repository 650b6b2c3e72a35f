#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "probe/link/base64.h"
#include "probe/link/bytes.h"
#include "probe/link/json_text.h"
#include "probe/link/json_value.h"
#include "probe/link/json_writer.h"
#include "probe/link/record.h"
#include "probe/link/timestamp.h"

/// JSON form of every record: keys are the field names, absent optional fields are left out, byte
/// strings are Base64, times are seconds since 2001. A record declares its field list once
/// (record.h) and is written and read by it.
namespace tarnix {

/// The JSON text of `record`; nothing when it holds what JSON cannot: a number that is not finite
/// or text that is not UTF-8.
///
/// The text stands behind `start`, if there is one.
template <Record R>
std::optional<std::string> encodeJson(const R& record, std::string start = {});

/// The same with long byte strings left out, which stay where they are in `record`.
template <Record R>
std::optional<JsonText> encodeJsonText(std::shared_ptr<const R> record);

/// Nothing when `json` is not an object, misses a required field, or has a field of another type.
/// Unknown keys are passed over; null counts as absent.
template <Record R>
std::optional<R> decodeJson(std::string_view json);

namespace json {

template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;

/// About how long the JSON text of a value is, so that a large text is not moved as it grows. What
/// has to be escaped, which is little, is not counted. Numbers, identifiers and the like count as
/// long as they can be.
template <class T>
std::size_t expectedSize(const T&) {
  return 40;
}
inline std::size_t expectedSize(const std::string& value) { return value.size() + 3; }
inline std::size_t expectedSize(const Bytes& value) { return base64Size(value.data.size()) + 3; }
inline std::size_t expectedSize(BytesView value) { return base64Size(value.data.size()) + 3; }
inline std::size_t expectedSize(const std::map<std::string, std::string>& value) {
  std::size_t size = 3;
  for (const auto& [name, text] : value) {
    size += name.size() + text.size() + 6;
  }
  return size;
}

template <Record R>
std::size_t expectedSize(const R& record);

template <Record R>
std::size_t expectedSize(const std::shared_ptr<const R>& record) {
  return expectedSize(*record);
}

template <class T>
std::size_t expectedSize(const std::vector<T>& values) {
  std::size_t size = 3;
  for (const T& value : values) {
    size += expectedSize(value);
  }
  return size;
}

template <Record R>
std::size_t expectedSize(const R& record) {
  const auto sizeOfField = [&](const auto& field) -> std::size_t {
    const std::size_t sizeOfKey = std::string_view(field.name).size() + 4;
    const auto& value = record.*field.member;
    if constexpr (isOptional<std::remove_cvref_t<decltype(value)>>) {
      return value ? sizeOfKey + expectedSize(*value) : 0;
    } else {
      return sizeOfKey + expectedSize(value);
    }
  };
  return std::apply([&](const auto&... field) { return (sizeOfField(field) + ... + 3); },
                    R::fields());
}

inline void write(JsonWriter& writer, const std::string& value) { writer.string(value); }
inline void write(JsonWriter& writer, bool value) { writer.boolean(value); }
inline void write(JsonWriter& writer, std::int64_t value) { writer.integer(value); }
inline void write(JsonWriter& writer, std::uint64_t value) { writer.unsignedInteger(value); }
inline void write(JsonWriter& writer, double value) { writer.number(value); }
inline void write(JsonWriter& writer, Timestamp value) {
  writer.number(value.secondsSinceReference);
}
inline void write(JsonWriter& writer, const Bytes& value) { writer.base64(value.data); }
inline void write(JsonWriter& writer, BytesView value) { writer.base64(value.data); }

/// An enumeration or identifier that travels as a string of its own.
template <class T>
requires StringCoded<T>
void write(JsonWriter& writer, const T& value) { writer.string(StringCoding<T>::toString(value)); }

inline void write(JsonWriter& writer, const std::map<std::string, std::string>& value) {
  writer.startObject();
  for (const auto& [name, text] : value) {
    writer.key(name);
    writer.string(text);
  }
  writer.endObject();
}

template <Record R>
void write(JsonWriter& writer, const R& record);

template <Record R>
void write(JsonWriter& writer, const std::shared_ptr<const R>& record) {
  write(writer, *record);
}

template <class T>
void write(JsonWriter& writer, const std::vector<T>& values) {
  writer.startArray();
  for (const T& value : values) {
    write(writer, value);
  }
  writer.endArray();
}

template <Record R>
void write(JsonWriter& writer, const R& record) {
  const auto writeField = [&](const auto& field) {
    const auto& value = record.*field.member;
    if constexpr (isOptional<std::remove_cvref_t<decltype(value)>>) {
      if (value) {
        writer.key(field.name);
        write(writer, *value);
      }
    } else {
      writer.key(field.name);
      write(writer, value);
    }
  };
  writer.startObject();
  std::apply([&](const auto&... field) { (writeField(field), ...); }, R::fields());
  writer.endObject();
}

template <class T>
bool assign(T& target, std::optional<T> value) {
  if (!value) {
    return false;
  }
  target = *std::move(value);
  return true;
}

inline bool read(JsonValue json, std::string& target) {
  const std::optional<std::string_view> text = json.string();
  if (text) {
    target = *text;
  }
  return text.has_value();
}
inline bool read(JsonValue json, bool& target) { return assign(target, json.boolean()); }
inline bool read(JsonValue json, std::int64_t& target) { return assign(target, json.integer()); }
inline bool read(JsonValue json, std::uint64_t& target) {
  return assign(target, json.unsignedInteger());
}
inline bool read(JsonValue json, double& target) { return assign(target, json.number()); }
inline bool read(JsonValue json, Timestamp& target) {
  return read(json, target.secondsSinceReference);
}
inline bool read(JsonValue json, Bytes& target) {
  const std::optional<std::string_view> text = json.string();
  return text && assign(target.data, decodeBase64(*text));
}

template <class T>
requires StringCoded<T>
bool read(JsonValue json, T& target) {
  const std::optional<std::string_view> text = json.string();
  return text && assign(target, StringCoding<T>::fromString(*text));
}

inline bool read(JsonValue json, std::map<std::string, std::string>& target) {
  const std::optional<std::size_t> count = json.memberCount();
  if (!count) {
    return false;
  }
  for (std::size_t index = 0; index < *count; ++index) {
    const std::optional<std::string_view> text = json.memberValue(index).string();
    if (!text) {
      return false;
    }
    target.insert_or_assign(std::string(json.memberName(index)), std::string(*text));
  }
  return true;
}

template <Record R>
bool read(JsonValue json, R& record);

template <class T>
bool read(JsonValue json, std::vector<T>& target) {
  const std::optional<std::size_t> size = json.arraySize();
  if (!size) {
    return false;
  }
  // One at a time: a list of wrong elements must not cost the room for as many right ones.
  for (std::size_t index = 0; index < *size; ++index) {
    if (!read(json.element(index), target.emplace_back())) {
      return false;
    }
  }
  return true;
}

template <Record R>
bool read(JsonValue json, R& record) {
  const auto readField = [&](const auto& field) {
    auto& target = record.*field.member;
    const std::optional<JsonValue> member = json.member(field.name);
    if constexpr (isOptional<std::remove_cvref_t<decltype(target)>>) {
      return !member || read(*member, target.emplace());
    } else {
      return member && read(*member, target);
    }
  };
  return json.isObject() &&
         std::apply([&](const auto&... field) { return (readField(field) && ...); }, R::fields());
}

}  // namespace json

template <Record R>
std::optional<std::string> encodeJson(const R& record, std::string start) {
  start.reserve(start.size() + json::expectedSize(record));
  JsonWriter writer(std::move(start));
  json::write(writer, record);
  std::string text;
  return writer.take(text) ? std::optional(std::move(text)) : std::nullopt;
}

template <Record R>
std::optional<JsonText> encodeJsonText(std::shared_ptr<const R> record) {
  JsonText result;
  JsonWriter writer(result.leftOut);
  json::write(writer, *record);
  if (!writer.take(result.text)) {
    return std::nullopt;
  }
  result.owner = std::move(record);
  return result;
}

template <Record R>
std::optional<R> decodeJson(std::string_view text) {
  const std::optional<JsonDocument> document = JsonDocument::parse(text);
  R record;
  if (!document || !json::read(document->root(), record)) {
    return std::nullopt;
  }
  return record;
}

}  // namespace tarnix
