#pragma once

#include <string_view>

namespace tarnix::platform {

/// A view that edits text. Main thread.
class TextInput {
 public:
  virtual ~TextInput() = default;

  /// UTF-8. At the caret, in place of the selection, as an input method does it.
  virtual void insertText(std::string_view text) = 0;
};

/// A view that takes keys but edits no text. Main thread.
class KeyInput {
 public:
  virtual ~KeyInput() = default;

  /// One user-perceived character, in UTF-8.
  virtual void insertText(std::string_view character) = 0;
};

}  // namespace tarnix::platform
