#include "platforms/qt6/shared/icon_label.h"

#include <algorithm>

namespace tarnix::qt6 {

QString labelOfIcon(const QString& nameOrSource) {
  if (nameOrSource.startsWith(QLatin1String("data:"))) {
    return {};
  }
  QString name = nameOrSource.section(u'/', -1).section(u'?', 0, 0);
  // "@2x" and the like tell the size only.
  name = name.section(u'@', 0, 0);
  const qsizetype suffix = name.lastIndexOf(u'.');
  if (suffix > 0) {
    name.truncate(suffix);
  }
  for (QChar& character : name) {
    if (character == u'-' || character == u'_' || character == u'.') {
      character = u' ';
    }
  }
  name = name.simplified();
  const bool saysSomething =
      std::any_of(name.cbegin(), name.cend(), [](QChar character) { return character.isLetter(); });
  return saysSomething ? name : QString();
}

}  // namespace tarnix::qt6
