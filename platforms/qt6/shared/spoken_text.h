#pragma once

#include <QString>

namespace tarnix::qt6 {

/// What an element says, and those around it. A button says its text, so that the text item inside
/// it, which draws just that, is not a second element.
struct SpokenText {
  QString label;
  QString value;
  /// Of the nearest element around; null for the outermost. Lives as long as this.
  const SpokenText* outer = nullptr;

  /// Whether the words of `text` stand, in this order and whole, in what an element around says.
  static bool covers(const SpokenText* innermost, const QString& text);
};

}  // namespace tarnix::qt6
