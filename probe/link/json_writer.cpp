#include "probe/link/json_writer.h"

#include <rapidjson/encodings.h>
#include <rapidjson/writer.h>

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

void JsonWriter::key(std::string_view name) {
  implementation_->writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
}

void JsonWriter::string(std::string_view text) {
  const bool written =
      implementation_->writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
  implementation_->complete &= written;
}

void JsonWriter::plainString(std::string_view text) {
  // RawValue writes the separator and counts the value; the quotation marks are ours to write.
  implementation_->stream.text.reserve(implementation_->stream.text.size() + text.size() + 3);
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
