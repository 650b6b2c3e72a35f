#pragma once

#include <QObject>
#include <optional>
#include <string>

namespace tarnix::qt6 {

/// The name that its author gave an object, out of the name that it bears; absent when it has none
/// or one of the toolkit's own.
inline std::optional<std::string> authorsName(const QString& name) {
  if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) ||
      name.startsWith(QLatin1String("_q_"))) {
    return std::nullopt;
  }
  return name.toStdString();
}

inline std::optional<std::string> authorsName(const QObject& object) {
  return authorsName(object.objectName());
}

}  // namespace tarnix::qt6
