#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "probe/platform/platform.h"
#include "tests/contract/qt6_host_world.h"

int main(int argc, char** argv) {
  const QTemporaryDir home;
  qputenv("HOME", home.path().toUtf8());
  qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  // The same on every machine.
  qputenv("QT_QUICK_CONTROLS_STYLE", "Basic");
  qputenv("LC_ALL", "C.UTF-8");
  testing::InitGoogleTest(&argc, argv);
  const tarnix::HostServices& services = tarnix::contract::qt6Services();
  tarnix::platform::Platform platform;
  platform.application = services.application;
  platform.mainQueue = services.mainQueue;
  tarnix::platform::setCurrent(platform);
  QApplication application(argc, argv);
  application.setStyle("Fusion");
  application.setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
