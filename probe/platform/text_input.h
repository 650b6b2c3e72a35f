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

}  // namespace tarnix::platform
