#pragma once

#include <string_view>

namespace tarnix::platform {

/// A view that takes keys but edits no text. Main thread.
class KeyInput {
 public:
  virtual ~KeyInput() = default;

  /// One user-perceived character, in UTF-8.
  virtual void insertText(std::string_view character) = 0;
};

}  // namespace tarnix::platform
