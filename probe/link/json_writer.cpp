#include "probe/link/json_writer.h"

#include <rapidjson/encodings.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

namespace tarnix {
namespace {

/// RapidJSON's output, straight into the string that is handed on.
class StringStream {
 public:
  using Ch = char;

  void Put(char character) { text.push_back(character); }
  void Flush() {}

  std::string text;
};

using Writer = rapidjson::Writer<StringStream, rapidjson::UTF8<>, rapidjson::UTF8<>,
                                 rapidjson::CrtAllocator, rapidjson::kWriteValidateEncodingFlag>;

/// Whether `text` stands in JSON as it is: printable ASCII without quotation mark and backslash.
/// Eight bytes at a time, since nearly all text is of that kind and is then copied whole.
bool needsNoEscaping(std::string_view text) {
  constexpr std::uint64_t ones = 0x0101'0101'0101'0101;
  constexpr std::uint64_t highs = 0x8080'8080'8080'8080;
  // The high bit of each byte of `word` that is below `bound`, for bytes below 128.
  const auto below = [](std::uint64_t word, std::uint64_t bound) {
    return (word - ones * bound) & ~word & highs;
  };
  const auto equals = [&](std::uint64_t word, char byte) {
    return below(word ^ (ones * static_cast<unsigned char>(byte)), 1);
  };
  std::uint64_t found = 0;
  while (!text.empty()) {
    // A short rest is filled up with letters.
    char bytes[8] = {'a', 'a', 'a', 'a', 'a', 'a', 'a', 'a'};
    const std::size_t count = std::min(text.size(), sizeof bytes);
    std::memcpy(bytes, text.data(), count);
    text.remove_prefix(count);
    const auto word = std::bit_cast<std::uint64_t>(bytes);
    found |= (word & highs) | below(word, 0x20) | equals(word, '"') | equals(word, '\\');
  }
  return found == 0;
}

}  // namespace

struct JsonWriter::Implementation {
  StringStream stream;
  Writer writer{stream};
  bool complete = true;
};

JsonWriter::JsonWriter() : implementation_(std::make_unique<Implementation>()) {}
JsonWriter::~JsonWriter() = default;

void JsonWriter::startObject() { implementation_->writer.StartObject(); }
void JsonWriter::endObject() { implementation_->writer.EndObject(); }
void JsonWriter::startArray() { implementation_->writer.StartArray(); }
void JsonWriter::endArray() { implementation_->writer.EndArray(); }

// To RapidJSON a key is a string that stands where a key is due.
void JsonWriter::key(std::string_view name) { string(name); }

void JsonWriter::string(std::string_view text) {
  if (needsNoEscaping(text)) {
    plainString(text);
    return;
  }
  const bool written =
      implementation_->writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  implementation_->complete &= written;
}

void JsonWriter::plainString(std::string_view text) {
  // RawValue writes the separator and counts the value; the quotation marks are ours to write.
  implementation_->writer.RawValue("\"", 1, rapidjson::kStringType);
  implementation_->stream.text.append(text);
  implementation_->stream.text.push_back('"');
}

void JsonWriter::integer(std::int64_t value) { implementation_->writer.Int64(value); }
void JsonWriter::unsignedInteger(std::uint64_t value) { implementation_->writer.Uint64(value); }

void JsonWriter::number(double value) {
  const bool written = implementation_->writer.Double(value);
  implementation_->complete &= written;
}

void JsonWriter::boolean(bool value) { implementation_->writer.Bool(value); }

bool JsonWriter::take(std::string& text) {
  if (!implementation_->complete) {
    text.clear();
    return false;
  }
  text = std::move(implementation_->stream.text);
  return true;
}

}  // namespace tarnix
