#include "probe/model/user_default_description.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

#include "probe/link/json_writer.h"
#include "probe/model/iso8601.h"
#include "probe/model/number_description.h"
#include "probe/platform/text.h"

namespace tarnix {
namespace {

using platform::PropertyValue;

// Values nested deeper than this are taken for ones that have no JSON form.
constexpr int maximumNesting = 512;
// Whole numbers up to here are exact in a double.
constexpr double largestExactInteger = 9'007'199'254'740'992.0;

std::string shortened(std::string text) {
  constexpr std::size_t limit = UserDefaultDescription::maximumCharacters;
  // No character is shorter than a byte.
  if (text.size() > limit && platform::hasMoreCharacters(text, limit)) {
    text.resize(platform::firstCharacters(text, limit).size());
    text += "...";
  }
  return text;
}

/// Writes values as JSON. Answers false for a value that has no JSON form: bytes, a date, a number
/// that is not finite, anything unnamed, and whatever contains one of them.
class PropertyJsonWriter {
 public:
  static std::optional<std::string> write(const PropertyValue& value) {
    JsonWriter writer;
    std::string text;
    if (!PropertyJsonWriter(writer).writeValue(value, 0) || !writer.take(text)) {
      return std::nullopt;
    }
    return text;
  }

 private:
  explicit PropertyJsonWriter(JsonWriter& writer) : writer_(writer) {}

  bool writeValue(const PropertyValue& value, int nesting) {
    return nesting <= maximumNesting &&
           std::visit([&](const auto& alternative) { return writeOne(alternative, nesting); },
                      value.value);
  }

  bool writeOne(const std::string& text, int) {
    writer_.string(text);
    return true;
  }
  bool writeOne(bool value, int) {
    writer_.boolean(value);
    return true;
  }
  bool writeOne(std::int64_t value, int) {
    writer_.integer(value);
    return true;
  }
  bool writeOne(std::uint64_t value, int) {
    writer_.unsignedInteger(value);
    return true;
  }
  bool writeOne(double value, int) {
    if (!std::isfinite(value)) {
      return false;
    }
    if (std::trunc(value) == value && std::abs(value) <= largestExactInteger) {
      writer_.integer(static_cast<std::int64_t>(value));
    } else {
      writer_.number(value);
    }
    return true;
  }
  bool writeOne(const PropertyValue::Data&, int) { return false; }
  bool writeOne(const PropertyValue::Date&, int) { return false; }
  bool writeOne(const PropertyValue::Other&, int) { return false; }
  bool writeOne(const PropertyValue::Array& array, int nesting) {
    writer_.startArray();
    for (const PropertyValue& element : array.elements) {
      if (!writeValue(element, nesting + 1)) {
        return false;
      }
    }
    writer_.endArray();
    return true;
  }
  bool writeOne(const PropertyValue::Dictionary& dictionary, int nesting) {
    writer_.startObject();
    for (const auto& [name, member] : dictionary.members) {
      writer_.key(name);
      if (!writeValue(member, nesting + 1)) {
        return false;
      }
    }
    writer_.endObject();
    return true;
  }

  JsonWriter& writer_;
};

UserDefaultDescription describe(const PropertyValue&, const std::string& text) {
  return {"String", shortened(text)};
}
UserDefaultDescription describe(const PropertyValue&, bool value) {
  return {"Bool", value ? "true" : "false"};
}
UserDefaultDescription describe(const PropertyValue&, std::int64_t value) {
  return {"Int", std::to_string(value)};
}
UserDefaultDescription describe(const PropertyValue&, std::uint64_t value) {
  return {"Int", std::to_string(value)};
}
UserDefaultDescription describe(const PropertyValue&, double value) {
  std::string text = describeNumber(value);
  const bool isWhole = std::isfinite(value) && std::trunc(value) == value;
  const bool looksWhole = text.find('.') == std::string::npos;
  return {isWhole && looksWhole ? "Int" : "Double", std::move(text)};
}
UserDefaultDescription describe(const PropertyValue&, const PropertyValue::Data& data) {
  return {"Data", "(" + std::to_string(data.bytes.size()) + " bytes)"};
}
UserDefaultDescription describe(const PropertyValue&, PropertyValue::Date date) {
  return {"Date", iso8601(date)};
}
UserDefaultDescription describe(const PropertyValue& value, const PropertyValue::Array& array) {
  std::optional<std::string> json = PropertyJsonWriter::write(value);
  return {"Array", json ? shortened(*std::move(json))
                        : "[" + std::to_string(array.elements.size()) + " items]"};
}
UserDefaultDescription describe(const PropertyValue& value,
                                const PropertyValue::Dictionary& dictionary) {
  std::optional<std::string> json = PropertyJsonWriter::write(value);
  return {"Dict", json ? shortened(*std::move(json))
                       : "{" + std::to_string(dictionary.members.size()) + " keys}"};
}
UserDefaultDescription describe(const PropertyValue&, const PropertyValue::Other& other) {
  return {"?", other.description};
}

}  // namespace

UserDefaultDescription describeUserDefault(const PropertyValue& value) {
  return std::visit([&](const auto& alternative) { return describe(value, alternative); },
                    value.value);
}

}  // namespace tarnix
