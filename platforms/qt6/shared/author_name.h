#pragma once

#include <QObject>
#include <optional>
#include <string>

namespace tarnix::qt6 {

/// The name that its author gave an object; absent when it has none or one of the toolkit's own.
inline std::optional<std::string> authorsName(const QObject& object) {
  const QString name = object.objectName();
  if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) ||
      name.startsWith(QLatin1String("_q_"))) {
    return std::nullopt;
  }
  return name.toStdString();
}

}  // namespace tarnix::qt6
