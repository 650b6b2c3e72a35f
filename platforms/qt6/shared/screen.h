#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <memory>
#include <vector>

#include "probe/platform/view_controller.h"

class QWindow;

namespace tarnix::qt6 {

class ScreenFinder;

/// Something of the host's that a person may take for a screen: a window, a dialog, a page.
struct Screen {
  QPointer<QObject> object;
  /// Who found it and can tell its class.
  ScreenFinder* finder = nullptr;
  /// Absent where a title does not name the screen.
  QString title;
  /// A window, a dialog or a page of something that has pages. What is not certain only covers
  /// most of its window: it is a page if it takes the place of another.
  bool isCertain = true;
  /// Of a class of the toolkit's own, which tells nobody what is on view.
  bool isToolkits = false;
};

/// What is on view, from the window inwards.
using ScreenChain = std::vector<Screen>;

/// How screens are found in the windows of one user interface library. Main thread.
class ScreenFinder {
 public:
  virtual ~ScreenFinder() = default;

  /// Adds the screens that `window` has on view; false when it is no window of this library. Takes
  /// bounded time, whatever the window holds.
  virtual bool addScreens(QWindow& window, ScreenChain& chain) = 0;

  /// The controller of a screen that was found here. It must not outlive `object`.
  virtual std::unique_ptr<platform::ViewController> controllerOf(QObject& object) = 0;
};

/// A page of something that has pages counts from this part of its window's area on: what is
/// smaller is a picture show or a tool box inside a page.
inline constexpr double smallestPage = 0.25;

/// What covers less of its window cannot be a page on its size alone.
inline constexpr double mostOfWindow = 0.5;

}  // namespace tarnix::qt6
