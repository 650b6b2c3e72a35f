#include "platforms/qt6/quick/web_scrolling.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickItem>
#include <QStyleHints>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>

#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/modality.h"

namespace tarnix::qt6::web_scrolling {

namespace {

/// What the engine moves a page by for each line of a wheel's step, in pixels.
constexpr double pixelsPerLine = 20;

/// A page is shorter. What a companion sends may be any number.
constexpr double farthest = 10'000'000;

int angleOf(double distance) {
  const int lines = std::max(1, QGuiApplication::styleHints()->wheelScrollLines());
  const double steps = std::clamp(distance, -farthest, farthest) / (lines * pixelsPerLine);
  return static_cast<int>(-steps * int{QWheelEvent::DefaultDeltasPerStep});
}

}  // namespace

bool isPage(const QQuickItem& item) {
  return isDerivedFrom(item.metaObject(), "QtWebEngineCore::RenderWidgetHostViewQtDelegateItem");
}

void scrollBy(QWindow& window, QPointF point, QPointF distance) {
  const QPoint angle(angleOf(distance.x()), angleOf(distance.y()));
  if (angle.isNull() || isBlockedByModal(window)) {
    return;
  }
  QWheelEvent event(point, window.mapToGlobal(point), QPoint(), angle, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&window, &event);
}

}  // namespace tarnix::qt6::web_scrolling
