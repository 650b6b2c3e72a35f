#include "platforms/qt6/shared/finger.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QStyleHints>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <memory>
#include <utility>

#include "platforms/qt6/shared/gui_symbol.h"
#include "platforms/qt6/shared/modality.h"

namespace tarnix::qt6::finger {

namespace {

using namespace std::chrono_literals;

/// How long a finger rests where the press itself has opened something that holds the host.
constexpr auto restingTime = 30ms;

using HandleMouseEvent = void (*)(QWindow*, const QPointF&, const QPointF&, Qt::MouseButtons,
                                  Qt::MouseButton, QEvent::Type, Qt::KeyboardModifiers, int);

/// Times of events, in milliseconds of the clock that display servers use. They rise. Two taps at
/// one place are two taps, however fast they follow: the second is dated past what makes a double
/// click.
class EventTimes {
 public:
  int ofPress(QPointF globalPoint) {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const bool isNear =
        (globalPoint - lastPress_).manhattanLength() <= hints.mouseDoubleClickDistance() * 2;
    const qint64 earliest = isNear ? lastPressTime_ + hints.mouseDoubleClickInterval() + 1 : 0;
    lastPress_ = globalPoint;
    lastPressTime_ = next(earliest);
    return inRange(lastPressTime_);
  }

  int ofRelease() { return inRange(next(0)); }

 private:
  qint64 next(qint64 earliest) {
    const qint64 now = std::chrono::duration_cast<std::chrono::milliseconds>(
                           std::chrono::steady_clock::now().time_since_epoch())
                           .count();
    last_ = std::max({now, earliest, last_ + 1});
    return last_;
  }

  static int inRange(qint64 time) { return static_cast<int>(time & 0x7FFF'FFFF); }

  QPointF lastPress_;
  qint64 lastPressTime_ = 0;
  qint64 last_ = 0;
};

EventTimes& eventTimes() {
  static EventTimes& instance = *new EventTimes;
  return instance;
}

void send(QWindow& window, QPointF point, QEvent::Type type,
          Qt::MouseButton button = Qt::LeftButton) {
  static const auto handleMouseEvent = guiSymbol<HandleMouseEvent>(
      "_Z19qt_handleMouseEventP7QWindowRK7QPointFS3_6QFlagsIN2Qt11MouseButtonEES6_N6QEvent4TypeES4_"
      "INS5_16KeyboardModifierEEi");
  const QPointF global = window.mapToGlobal(point);
  const bool isPress = type == QEvent::MouseButtonPress;
  const Qt::MouseButtons held = isPress ? Qt::LeftButton : Qt::NoButton;
  const int time = isPress ? eventTimes().ofPress(global) : eventTimes().ofRelease();
  if (handleMouseEvent != nullptr) {
    handleMouseEvent(&window, point, global, held, button, type, Qt::NoModifier, time);
  } else if (!isBlockedByModal(window)) {
    QMouseEvent event(type, point, point, global, button, held, Qt::NoModifier);
    event.setTimestamp(static_cast<quint64>(time));
    QCoreApplication::sendEvent(&window, &event);
  }
}

class Release {
 public:
  Release(QWindow& window, QPointF point) : window_(&window), point_(point) {}

  /// Once; later calls do nothing.
  void happen() {
    if (std::exchange(hasHappened_, true)) {
      return;
    }
    if (window_ == nullptr) {
      // The press has closed it. A finger is lifted wherever it is then.
      window_ = QGuiApplication::focusWindow();
    }
    if (window_ != nullptr) {
      send(*window_, point_, QEvent::MouseButtonRelease);
    }
    // A finger that is lifted hovers over nothing.
    if (window_ != nullptr && window_->inherits("QQuickWindow")) {
      QEvent leave(QEvent::Leave);
      QCoreApplication::sendEvent(window_, &leave);
    }
  }

 private:
  QPointer<QWindow> window_;
  QPointF point_;
  bool hasHappened_ = false;
};

}  // namespace

void tap(QWindow& window, QPointF point) {
  const auto release = std::make_shared<Release>(window, point);
  QTimer::singleShot(restingTime, QCoreApplication::instance(), [release] { release->happen(); });
  send(window, point, QEvent::MouseButtonPress);
  release->happen();
}

void approach(QWindow& window, QPointF point) {
  send(window, point, QEvent::MouseMove, Qt::NoButton);
}

}  // namespace tarnix::qt6::finger
