#pragma once

#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "probe/bootstrap/host_module.h"
#include "tests/contract/screen_description.h"

namespace tarnix::contract {

/// The services of the Qt 6 host in this process, which has an application object that draws to no
/// screen.
const HostServices& qt6Services();

/// Runs the event loop until `condition` holds; false when it does not within some seconds.
bool pumpUntil(const std::function<bool()>& condition);
void letPass(std::chrono::milliseconds duration);

/// What the worlds of widgets and of Quick have in common.
class Qt6HostWorld {
 public:
  platform::Application& application() { return *qt6Services().application; }
  platform::MainQueue& mainQueue() { return *qt6Services().mainQueue; }
  platform::OverlaySurfaces& overlaySurfaces() { return *qt6Services().overlaySurfaces; }
  bool pumpUntil(const std::function<bool()>& condition) { return contract::pumpUntil(condition); }
  void letPass(std::chrono::milliseconds duration) { contract::letPass(duration); }
};

class WidgetsHostWorld : public Qt6HostWorld {
 public:
  ~WidgetsHostWorld() { removeAll(); }

  void show(const ScreenDescription& screen);
  void showSecondWindow();
  void removeAll();
  /// How often the button of that label was clicked.
  int clicks(const std::string& label) const;

 private:
  std::vector<QPointer<QWidget>> windows_;
};

class QuickHostWorld : public Qt6HostWorld {
 public:
  ~QuickHostWorld() { removeAll(); }

  void show(const ScreenDescription& screen);
  void showSecondWindow();
  void removeAll();
  /// How often the button of that label was clicked.
  int clicks(const std::string& label) const;

 private:
  QQmlEngine engine_;
  std::vector<QPointer<QQuickWindow>> windows_;
};

}  // namespace tarnix::contract
