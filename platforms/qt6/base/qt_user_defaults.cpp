#include "platforms/qt6/base/qt_user_defaults.h"

#include <QCoreApplication>
#include <QSettings>

#include "platforms/qt6/base/property_value_of.h"

namespace tarnix::qt6 {

QtUserDefaults& QtUserDefaults::shared() {
  static QtUserDefaults& instance = *new QtUserDefaults;
  return instance;
}

std::vector<std::pair<std::string, platform::PropertyValue>>
QtUserDefaults::dictionaryRepresentation() const {
  std::vector<std::pair<std::string, platform::PropertyValue>> result;
  if (QCoreApplication::instance() == nullptr) {
    return result;
  }
  const QSettings settings;
  const QStringList keys = settings.allKeys();
  result.reserve(static_cast<std::size_t>(keys.size()));
  for (const QString& key : keys) {
    result.emplace_back(key.toStdString(), propertyValueOf(settings.value(key)));
  }
  return result;
}

}  // namespace tarnix::qt6
