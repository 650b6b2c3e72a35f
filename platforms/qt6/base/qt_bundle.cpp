#include "platforms/qt6/base/qt_bundle.h"

#include <limits.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QStringList>
#include <algorithm>

namespace tarnix::qt6 {

namespace {

std::optional<std::string> unlessEmpty(const QString& text) {
  return text.isEmpty() ? std::nullopt : std::optional(text.toStdString());
}

std::optional<std::string> executableName() {
  // Asked of the system: the toolkit warns when it is asked before there is an application object.
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
  if (length <= 0) {
    return std::nullopt;
  }
  const std::string_view whole(path, static_cast<std::size_t>(length));
  return std::string(whole.substr(whole.rfind('/') + 1));
}

/// "example.org" and "Editor" make "org.example.Editor".
QString reversedDomainName() {
  QStringList parts = QCoreApplication::organizationDomain().split(u'.', Qt::SkipEmptyParts);
  const QString name = QCoreApplication::applicationName();
  if (parts.isEmpty() || name.isEmpty()) {
    return {};
  }
  std::reverse(parts.begin(), parts.end());
  return parts.join(u'.') + u'.' + name;
}

QString desktopFileName() {
  QString name = QGuiApplication::desktopFileName();
  // Some applications name the file, suffix and all.
  if (name.endsWith(QLatin1String(".desktop"))) {
    name.chop(8);
  }
  return name;
}

}  // namespace

QtBundle& QtBundle::shared() {
  static QtBundle& instance = *new QtBundle;
  return instance;
}

std::optional<std::string> QtBundle::bundleIdentifier() const {
  if (const QString name = desktopFileName(); !name.isEmpty()) {
    return name.toStdString();
  }
  if (const QString name = reversedDomainName(); !name.isEmpty()) {
    return name.toStdString();
  }
  return executableName();
}

std::optional<std::string> QtBundle::infoValue(std::string_view key) const {
  if (key == "CFBundleDisplayName") {
    return unlessEmpty(QGuiApplication::applicationDisplayName());
  }
  if (key == "CFBundleName") {
    return unlessEmpty(QCoreApplication::applicationName());
  }
  if (key == "CFBundleShortVersionString") {
    return unlessEmpty(QCoreApplication::applicationVersion());
  }
  // There is no build number apart from the version.
  return std::nullopt;
}

}  // namespace tarnix::qt6
