#include "platforms/qt6/shared/spoken_label.h"

#include <algorithm>
#include <utility>

namespace tarnix::qt6 {

QString withoutLineBreaks(QString text) {
  const auto isBreak = [](QChar character) {
    return character == u'\n' || character == u'\r' || character == u'\t' ||
           character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
  };
  if (std::any_of(text.cbegin(), text.cend(), isBreak)) {
    std::replace_if(text.begin(), text.end(), isBreak, QChar(u' '));
  }
  return text;
}

QString inOneLine(QString label) {
  label = withoutLineBreaks(std::move(label));
  const QString trimmed = label.trimmed();
  return trimmed.isEmpty() ? label : trimmed;
}

bool saysSomething(const QString& label, platform::AccessibilityTraits traits) {
  namespace t = platform::accessibility_traits;
  return (traits & (t::button | t::image)) != 0 ? !label.isEmpty() : !label.trimmed().isEmpty();
}

}  // namespace tarnix::qt6
