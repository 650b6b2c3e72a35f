#include <QtWebEngineQuick/qtwebenginequickglobal.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "platforms/qt6/base/qt_web_view_class.h"
#include "platforms/qt6/webengine/engine_hook.h"
#include "probe/capture/probe_web_view_console_capture.h"
#include "tests/fakes/fake_platform.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QTemporaryDir home;
  qputenv("HOME", home.path().toLocal8Bit());
  qputenv("XDG_RUNTIME_DIR", home.path().toLocal8Bit());
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
  // Nothing but the loopback interface is ever asked for.
  qputenv("QTWEBENGINE_CHROMIUM_FLAGS",
          "--disable-gpu --disable-background-networking --disable-component-update "
          "--host-resolver-rules=\"MAP * ~NOTFOUND , EXCLUDE 127.0.0.1 , EXCLUDE localhost\"");

  tarnix::fakes::FakePlatform platform;
  tarnix::platform::Platform withWebViews = tarnix::platform::current();
  withWebViews.webViewClass = &tarnix::qt6::QtWebViewClass::shared();
  tarnix::platform::setCurrent(withWebViews);
  tarnix::ProbeWebViewConsoleCapture::exchangeInitialisers();
  tarnix::qt6::engine_hook::install({&tarnix::qt6::QtWebViewClass::shared().initialiser()});

  QtWebEngineQuick::initialize();
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
