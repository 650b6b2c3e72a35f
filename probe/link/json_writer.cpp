#include "probe/link/json_writer.h"

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <cstring>
#include <utility>

#include "probe/link/base64.h"

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

using Word = std::uint64_t;

/// For each byte of `word` that JSON does not take as it is, its high bit: control characters,
/// quotation mark, backslash, and what is not ASCII. Above the first such byte there may be a high
/// bit too many.
Word specialBytesOf(Word word) {
  constexpr Word ones = 0x0101'0101'0101'0101;
  constexpr Word highs = 0x8080'8080'8080'8080;
  const auto below = [](Word bytes, Word bound) { return (bytes - ones * bound) & ~bytes; };
  return (word | below(word, ' ') | below(word ^ (ones * '"'), 1) |
          below(word ^ (ones * '\\'), 1)) &
         highs;
}

bool isSpecial(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < ' ' || byte >= 0x80 || byte == '"' || byte == '\\';
}

/// How much of the beginning of `text` stands in JSON as it is. Nearly all text does as a whole,
/// so that eight bytes are looked at together.
std::size_t plainLength(std::string_view text) {
  std::size_t length = 0;
  for (Word word = 0; text.size() - length >= sizeof word; length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if (specialBytesOf(word) != 0) {
      break;
    }
  }
  while (length < text.size() && !isSpecial(text[length])) {
    ++length;
  }
  return length;
}

/// Of a character of ASCII that cannot stand as it is.
void appendEscaped(char character, std::string& text) {
  constexpr std::string_view hexadecimal = "0123456789ABCDEF";
  text.push_back('\\');
  switch (character) {
    case '\b':
      text.push_back('b');
      break;
    case '\f':
      text.push_back('f');
      break;
    case '\n':
      text.push_back('n');
      break;
    case '\r':
      text.push_back('r');
      break;
    case '\t':
      text.push_back('t');
      break;
    case '"':
    case '\\':
      text.push_back(character);
      break;
    default:
      text.append("u00");
      text.push_back(hexadecimal[static_cast<unsigned char>(character) >> 4]);
      text.push_back(hexadecimal[character & 0xF]);
  }
}

/// Appends one character of more than one byte and takes it off `text`; false when `text` does not
/// begin with one.
bool appendMultibyte(std::string_view& text, StringStream& stream) {
  rapidjson::MemoryStream input(text.data(), text.size());
  if (!rapidjson::UTF8<>::Validate(input, stream)) {
    return false;
  }
  text.remove_prefix(input.Tell());
  return true;
}

/// False when `text` is not UTF-8.
bool appendContents(std::string_view text, StringStream& stream) {
  while (true) {
    const std::size_t plain = plainLength(text);
    stream.text.append(text.data(), plain);
    text.remove_prefix(plain);
    if (text.empty()) {
      return true;
    }
    if (static_cast<unsigned char>(text.front()) < 0x80) {
      appendEscaped(text.front(), stream.text);
      text.remove_prefix(1);
    } else if (!appendMultibyte(text, stream)) {
      return false;
    }
  }
}

}  // namespace

struct JsonWriter::Implementation {
  StringStream stream;
  Writer writer{stream};
  bool complete = true;
  /// Null when everything is written.
  std::vector<JsonText::LeftOut>* leftOut = nullptr;
};

JsonWriter::JsonWriter(std::string start) : implementation_(std::make_unique<Implementation>()) {
  implementation_->stream.text = std::move(start);
}
JsonWriter::JsonWriter(std::vector<JsonText::LeftOut>& leftOut) : JsonWriter(std::string()) {
  implementation_->leftOut = &leftOut;
}
JsonWriter::~JsonWriter() = default;

void JsonWriter::startObject() { implementation_->writer.StartObject(); }
void JsonWriter::endObject() { implementation_->writer.EndObject(); }
void JsonWriter::startArray() { implementation_->writer.StartArray(); }
void JsonWriter::endArray() { implementation_->writer.EndArray(); }

// To RapidJSON a key is a string that stands where a key is due.
void JsonWriter::key(std::string_view name) { string(name); }

void JsonWriter::string(std::string_view text) {
  // RawValue writes the separator and counts the value; the quotation marks are ours to write.
  implementation_->writer.RawValue("\"", 1, rapidjson::kStringType);
  implementation_->complete &= appendContents(text, implementation_->stream);
  implementation_->stream.text.push_back('"');
}

void JsonWriter::base64(std::string_view bytes) {
  implementation_->writer.RawValue("\"", 1, rapidjson::kStringType);
  std::string& text = implementation_->stream.text;
  if (implementation_->leftOut != nullptr && bytes.size() >= JsonText::shortestLeftOut) {
    implementation_->leftOut->push_back({text.size(), bytes});
  } else {
    appendBase64(bytes, text);
  }
  text.push_back('"');
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
