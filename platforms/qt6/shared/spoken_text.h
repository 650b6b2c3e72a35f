#pragma once

#include <QString>
#include <memory>

namespace tarnix::qt6 {

/// What the elements around a place already say. A button says its text, so that the text item
/// inside it, which draws just that, is not a second element. Immutable; shared by all views below
/// an element.
class SpokenText {
 public:
  SpokenText(QString label, QString value, std::shared_ptr<const SpokenText> outer);

  /// Whether the words of `text` stand, in this order and whole, in what an element around says.
  static bool covers(const SpokenText* innermost, const QString& text);

 private:
  QString label_;
  QString value_;
  std::shared_ptr<const SpokenText> outer_;
};

}  // namespace tarnix::qt6
