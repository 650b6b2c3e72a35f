#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

#include "tests/integration/traffic/trace_host/output.h"

namespace trace_host {

/// Takes the deep links of this application's own scheme.
class LinkHandler : public QObject {
  Q_OBJECT

 public:
  LinkHandler() { QDesktopServices::setUrlHandler("shop", this, "open"); }
  ~LinkHandler() override { QDesktopServices::unsetUrlHandler("shop"); }
  LinkHandler(const LinkHandler&) = delete;
  LinkHandler& operator=(const LinkHandler&) = delete;

  Q_INVOKABLE void open(const QUrl& url) { opened_.append(url.toString(QUrl::FullyEncoded)); }

  void sayOpened() const {
    for (const QString& url : opened_) {
      say("  " + url);
    }
  }

 private:
  QStringList opened_;
};

}  // namespace trace_host
