#include "probe/link/json_value.h"

#include <rapidjson/document.h>
#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace tarnix {
namespace {

using Value = rapidjson::Value;

const Value& valueOf(const void* value) { return *static_cast<const Value*>(value); }

std::string_view textOf(const Value& value) { return {value.GetString(), value.GetStringLength()}; }

rapidjson::SizeType indexOf(std::size_t index) { return static_cast<rapidjson::SizeType>(index); }

/// The whole of `text` as a number; nothing when it is none or out of range.
template <class Number>
std::optional<Number> numberOf(std::string_view text) {
  Number number{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                  : std::nullopt;
}

/// Whether `text`, which is UTF-8 in all else, holds half of a surrogate pair. The reader refuses
/// them as bytes and as first halves, and lets a second half through that is written as an escape.
bool holdsSurrogate(std::string_view text) {
  constexpr char leadByte = '\xED';
  for (std::size_t place = text.find(leadByte); place != std::string_view::npos;
       place = text.find(leadByte, place + 1)) {
    if (static_cast<unsigned char>(text[place + 1]) >= 0xA0) {
      return true;
    }
  }
  return false;
}

/// Builds a document from a reader's events. The reader only tells where numbers begin and end:
/// its own exact conversion counts the leading zeroes of 0 on a text like "0e50", which is
/// undefined, and what a peer sends must not be.
class DocumentBuilder {
 public:
  explicit DocumentBuilder(rapidjson::Document& document) : document_(document) {}

  bool RawNumber(const char* characters, rapidjson::SizeType length, bool) {
    const std::string_view text(characters, length);
    if (const auto natural = numberOf<std::uint64_t>(text)) {
      return document_.Uint64(*natural);
    }
    if (const auto whole = numberOf<std::int64_t>(text)) {
      return document_.Int64(*whole);
    }
    if (const auto number = numberOf<double>(text)) {
      return document_.Double(*number);
    }
    // Out of range. What is too small is next to 0; what is too large makes the text invalid.
    const std::size_t exponent = text.find_first_of("eE");
    const bool isSmall = exponent == std::string_view::npos
                             ? text.starts_with('0') || text.starts_with("-0")
                             : text.substr(exponent + 1).starts_with('-');
    return isSmall && document_.Double(0);
  }

  // The other events go straight on. Numbers never come in these forms.
  bool Int(int) { return false; }
  bool Uint(unsigned) { return false; }
  bool Int64(std::int64_t) { return false; }
  bool Uint64(std::uint64_t) { return false; }
  bool Double(double) { return false; }
  bool Null() { return document_.Null(); }
  bool Bool(bool value) { return document_.Bool(value); }
  bool String(const char* characters, rapidjson::SizeType length, bool copy) {
    return !holdsSurrogate({characters, length}) && document_.String(characters, length, copy);
  }
  bool StartObject() { return document_.StartObject(); }
  bool Key(const char* characters, rapidjson::SizeType length, bool copy) {
    return !holdsSurrogate({characters, length}) && document_.Key(characters, length, copy);
  }
  bool EndObject(rapidjson::SizeType count) { return document_.EndObject(count); }
  bool StartArray() { return document_.StartArray(); }
  bool EndArray(rapidjson::SizeType count) { return document_.EndArray(count); }

 private:
  rapidjson::Document& document_;
};

/// Hands a text's values to a document that asks for them.
class TextGenerator {
 public:
  explicit TextGenerator(std::string_view text) : text_(text) {}

  bool operator()(rapidjson::Document& document) {
    // Iterative: the stack that grows with the nesting is on the heap, and bounded by the text.
    constexpr unsigned flags = rapidjson::kParseIterativeFlag |
                               rapidjson::kParseNumbersAsStringsFlag |
                               rapidjson::kParseValidateEncodingFlag;
    rapidjson::MemoryStream bytes(text_.data(), text_.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
    rapidjson::Reader reader;
    DocumentBuilder builder(document);
    isComplete = static_cast<bool>(reader.Parse<flags>(stream, builder));
    return isComplete;
  }

  bool isComplete = false;

 private:
  std::string_view text_;
};

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
  auto implementation = std::make_unique<Implementation>();
  TextGenerator generator(text);
  implementation->document.Populate(generator);
  if (!generator.isComplete) {
    return std::nullopt;
  }
  return JsonDocument(std::move(implementation));
}

JsonValue JsonDocument::root() const { return JsonValue(&implementation_->document); }

}  // namespace tarnix
