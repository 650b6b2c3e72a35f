#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "probe/link/json_text.h"

namespace tarnix {

/// Writes one JSON text, front to back, without an intermediate tree. Keeps the JSON library out
/// of every header.
///
/// A value that JSON cannot hold (a number that is not finite, text that is not UTF-8) does not
/// stop the writing; it makes `take` answer with nothing.
class JsonWriter {
 public:
  /// Writes behind `start`, and within its capacity as long as that lasts.
  explicit JsonWriter(std::string start = {});
  /// Leaves long byte strings out of the text, which are added to `leftOut` instead.
  explicit JsonWriter(std::vector<JsonText::LeftOut>& leftOut);
  ~JsonWriter();

  void startObject();
  void endObject();
  void startArray();
  void endArray();
  void key(std::string_view name);
  void string(std::string_view text);
  /// A string that holds Base64.
  void base64(std::string_view bytes);
  void integer(std::int64_t value);
  void unsignedInteger(std::uint64_t value);
  void number(double value);
  void boolean(bool value);

  /// The finished text, or false and an empty text when a value could not be written.
  bool take(std::string& text);

 private:
  struct Implementation;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace tarnix
