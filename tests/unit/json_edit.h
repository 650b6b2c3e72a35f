#pragma once

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>
#include <string_view>
#include <vector>

/// Changes to JSON texts, by the library and not by the code under test.
namespace tarnix::tests {

inline rapidjson::Document parsed(std::string_view json) {
  rapidjson::Document document;
  document.Parse<rapidjson::kParseFullPrecisionFlag>(json.data(), json.size());
  return document;
}

inline std::string textOf(const rapidjson::Document& document) {
  rapidjson::StringBuffer buffer;
  rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
  document.Accept(writer);
  return {buffer.GetString(), buffer.GetSize()};
}

/// The keys of an object, in order.
inline std::vector<std::string> keysOf(std::string_view json) {
  const rapidjson::Document document = parsed(json);
  std::vector<std::string> keys;
  for (const auto& member : document.GetObject()) {
    keys.emplace_back(member.name.GetString(), member.name.GetStringLength());
  }
  return keys;
}

inline std::string without(std::string_view json, const std::string& key) {
  rapidjson::Document document = parsed(json);
  document.RemoveMember(key.c_str());
  return textOf(document);
}

/// With the member put to what `value` says, added where there was none.
inline std::string with(std::string_view json, const std::string& key, std::string_view value) {
  rapidjson::Document document = parsed(json);
  document.RemoveMember(key.c_str());
  rapidjson::Document member(&document.GetAllocator());
  member.Parse(value.data(), value.size());
  document.AddMember(rapidjson::Value(key.c_str(), document.GetAllocator()), member,
                     document.GetAllocator());
  return textOf(document);
}

/// Whether two texts hold the same, whatever the order of their keys.
inline bool sameJson(std::string_view left, std::string_view right) {
  const rapidjson::Document a = parsed(left);
  const rapidjson::Document b = parsed(right);
  return !a.HasParseError() && !b.HasParseError() && a == b;
}

}  // namespace tarnix::tests
