#include "platforms/qt6/shared/spoken_label.h"

#include <algorithm>

namespace tarnix::qt6 {

QString inOneLine(QString label) {
  const auto isBreak = [](QChar character) {
    return character == u'\n' || character == u'\r' || character == u'\t' ||
           character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
  };
  if (std::any_of(label.cbegin(), label.cend(), isBreak)) {
    std::replace_if(label.begin(), label.end(), isBreak, QChar(u' '));
  }
  const QString trimmed = label.trimmed();
  return trimmed.isEmpty() ? label : trimmed;
}

bool saysSomething(const QString& label, platform::AccessibilityTraits traits) {
  namespace t = platform::accessibility_traits;
  return (traits & (t::button | t::image)) != 0 ? !label.isEmpty() : !label.trimmed().isEmpty();
}

}  // namespace tarnix::qt6
