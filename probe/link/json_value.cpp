#include "probe/link/json_value.h"

#include <rapidjson/document.h>

#include <cmath>
#include <limits>

namespace tarnix {
namespace {

using Value = rapidjson::Value;

const Value& valueOf(const void* value) { return *static_cast<const Value*>(value); }

std::string_view textOf(const Value& value) { return {value.GetString(), value.GetStringLength()}; }

rapidjson::SizeType indexOf(std::size_t index) { return static_cast<rapidjson::SizeType>(index); }

}  // namespace

std::optional<JsonValue> JsonValue::member(std::string_view name) const {
  const Value& value = valueOf(value_);
  if (!value.IsObject()) {
    return std::nullopt;
  }
  const auto found =
      value.FindMember(Value(rapidjson::StringRef(name.data(), indexOf(name.size()))));
  if (found == value.MemberEnd() || found->value.IsNull()) {
    return std::nullopt;
  }
  return JsonValue(&found->value);
}

bool JsonValue::isObject() const { return valueOf(value_).IsObject(); }

std::optional<std::string_view> JsonValue::string() const {
  const Value& value = valueOf(value_);
  return value.IsString() ? std::optional(textOf(value)) : std::nullopt;
}

std::optional<bool> JsonValue::boolean() const {
  const Value& value = valueOf(value_);
  return value.IsBool() ? std::optional(value.GetBool()) : std::nullopt;
}

std::optional<std::int64_t> JsonValue::integer() const {
  const Value& value = valueOf(value_);
  if (value.IsInt64()) {
    return value.GetInt64();
  }
  constexpr double range = 9'223'372'036'854'775'808.0;  // 2^63
  if (!value.IsDouble()) {
    return std::nullopt;
  }
  const double number = value.GetDouble();
  if (std::trunc(number) != number || number < -range || number >= range) {
    return std::nullopt;
  }
  return static_cast<std::int64_t>(number);
}

std::optional<std::uint64_t> JsonValue::unsignedInteger() const {
  const Value& value = valueOf(value_);
  if (value.IsUint64()) {
    return value.GetUint64();
  }
  const std::optional<std::int64_t> whole = integer();
  if (!whole || *whole < 0) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(*whole);
}

std::optional<double> JsonValue::number() const {
  const Value& value = valueOf(value_);
  return value.IsNumber() ? std::optional(value.GetDouble()) : std::nullopt;
}

std::optional<std::size_t> JsonValue::arraySize() const {
  const Value& value = valueOf(value_);
  return value.IsArray() ? std::optional<std::size_t>(value.Size()) : std::nullopt;
}

JsonValue JsonValue::element(std::size_t index) const {
  return JsonValue(&valueOf(value_)[indexOf(index)]);
}

std::optional<std::size_t> JsonValue::memberCount() const {
  const Value& value = valueOf(value_);
  return value.IsObject() ? std::optional<std::size_t>(value.MemberCount()) : std::nullopt;
}

std::string_view JsonValue::memberName(std::size_t index) const {
  return textOf((valueOf(value_).MemberBegin() + static_cast<std::ptrdiff_t>(index))->name);
}

JsonValue JsonValue::memberValue(std::size_t index) const {
  return JsonValue(&(valueOf(value_).MemberBegin() + static_cast<std::ptrdiff_t>(index))->value);
}

struct JsonDocument::Implementation {
  rapidjson::Document document;
};

JsonDocument::JsonDocument(std::unique_ptr<Implementation> implementation)
    : implementation_(std::move(implementation)) {}
JsonDocument::JsonDocument(JsonDocument&&) noexcept = default;
JsonDocument& JsonDocument::operator=(JsonDocument&&) noexcept = default;
JsonDocument::~JsonDocument() = default;

std::optional<JsonDocument> JsonDocument::parse(std::string_view text) {
  // Iterative: the stack that grows with the nesting is on the heap, and bounded by the text.
  constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag |
                             rapidjson::kParseValidateEncodingFlag;
  auto implementation = std::make_unique<Implementation>();
  implementation->document.Parse<flags>(text.data(), text.size());
  if (implementation->document.HasParseError()) {
    return std::nullopt;
  }
  return JsonDocument(std::move(implementation));
}

JsonValue JsonDocument::root() const { return JsonValue(&implementation_->document); }

}  // namespace tarnix
