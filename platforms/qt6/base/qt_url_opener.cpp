#include "platforms/qt6/base/qt_url_opener.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

namespace tarnix::qt6 {

QtUrlOpener& QtUrlOpener::shared() {
  static QtUrlOpener& instance = *new QtUrlOpener;
  return instance;
}

void QtUrlOpener::open(const Url& url) {
  // Nobody can open a reference that is relative to nothing, and the toolkit would take it for the
  // name of a file.
  if (url.scheme() && qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
    QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(url.absoluteString())));
  }
}

}  // namespace tarnix::qt6
