#include "platforms/qt6/base/qt_window_scene.h"

#include <QGuiApplication>
#include <QPointer>
#include <QWindow>
#include <utility>

#include "platforms/qt6/base/contentless_view.h"
#include "platforms/qt6/base/part_loader.h"
#include "platforms/qt6/base/popup_dismissal.h"
#include "platforms/qt6/base/qt_window.h"
#include "platforms/qt6/base/window_order.h"
#include "platforms/qt6/shared/touched_view.h"

namespace tarnix::qt6 {

namespace {

QPointF globalOrigin(const QWindow& window) { return window.mapToGlobal(QPointF(0, 0)); }

QRectF areaOf(const QWindow& window, const QWindow& keyWindow) {
  return {globalOrigin(window) - globalOrigin(keyWindow), window.size()};
}

/// The right and the lower edge are those of the next pixels.
bool isInside(const QRectF& area, QPointF point) {
  return point.x() >= area.left() && point.x() < area.right() && point.y() >= area.top() &&
         point.y() < area.bottom();
}

/// What the popups in front hide; those with a transparent background may be of any shape.
QRegion coveredBy(const QList<QWindow*>& popups, const QWindow& keyWindow) {
  QRegion result;
  for (const QWindow* popup : popups) {
    if (!popup->requestedFormat().hasAlpha() && popup->mask().isEmpty() && popup->opacity() >= 1) {
      result += areaOf(*popup, keyWindow).toRect();
    }
  }
  return result;
}

std::shared_ptr<platform::View> contentOf(QWindow& window, const QWindow& keyWindow,
                                          const QRegion& covered) {
  Surroundings surroundings;
  surroundings.origin = areaOf(window, keyWindow).topLeft();
  surroundings.covered = covered;
  surroundings.clip = QRectF(surroundings.origin, window.size());
  if (std::shared_ptr<platform::View> view = PartLoader::shared().viewOf(window, surroundings)) {
    return view;
  }
  return std::make_shared<ContentlessView>(window, surroundings.origin);
}

std::shared_ptr<platform::View> touchedIn(QWindow& window, const QWindow& keyWindow,
                                          QPointF point) {
  Surroundings surroundings;
  const QRectF area = areaOf(window, keyWindow);
  surroundings.origin = area.topLeft();
  surroundings.clip = area;
  if (!isInside(area, point)) {
    return nullptr;
  }
  if (auto view = PartLoader::shared().touchedView(window, surroundings, point, nullptr)) {
    return view;
  }
  // A window with content that the point misses is cut out there.
  if (PartLoader::shared().viewOf(window, surroundings) != nullptr) {
    return nullptr;
  }
  return std::make_shared<ContentlessView>(window, surroundings.origin, point - area.topLeft());
}

bool takesTouch(const QWindow& window) {
  return window.type() != Qt::ToolTip && !window.flags().testFlag(Qt::WindowTransparentForInput);
}

/// What a touch reaches that the popups in front do not take. A menu or list that is open takes
/// every touch: one beside it closes it.
std::shared_ptr<platform::View> touchedAt(QWindow& window, QPointF point) {
  QList<QWindow*> popups = WindowOrder::popups();
  popups.removeIf([](const QWindow* popup) { return !takesTouch(*popup); });
  for (qsizetype at = popups.size() - 1; at >= 0; --at) {
    if (isInside(areaOf(*popups[at], window), point)) {
      return touchedIn(*popups[at], window, point);
    }
  }
  if (!popups.isEmpty() && popups.last()->type() == Qt::Popup) {
    return std::make_shared<TouchedView>(contentOf(*popups.last(), window, QRegion()), nullptr,
                                         std::make_shared<PopupDismissal>(window, point));
  }
  return touchedIn(window, window, point);
}

}  // namespace

std::vector<std::shared_ptr<platform::Window>> QtWindowScene::windows() const {
  std::vector<std::shared_ptr<platform::Window>> result;
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
    return result;
  }
  PartLoader::shared().update();
  const QWindow* const keyWindow = WindowOrder::shared().keyWindow();
  for (QWindow* window : WindowOrder::windows()) {
    const bool isKey = window == keyWindow;
    const QList<QWindow*> popups = isKey ? WindowOrder::popups() : QList<QWindow*>();
    std::vector<std::shared_ptr<platform::View>> popupViews;
    for (qsizetype at = 0; at < popups.size(); ++at) {
      popupViews.push_back(
          contentOf(*popups[at], *keyWindow, coveredBy(popups.mid(at + 1), *keyWindow)));
    }
    // There is a key window wherever there is a window.
    result.push_back(std::make_shared<QtWindow>(
        *window, contentOf(*window, *keyWindow, coveredBy(popups, *keyWindow)),
        std::move(popupViews), isKey, [touched = QPointer(window), isKey](platform::Point point) {
          return touched == nullptr || !isKey ? nullptr
                                              : touchedAt(*touched, QPointF(point.x, point.y));
        }));
  }
  return result;
}

bool QtWindowScene::isForegroundActive() const {
  return isConnected() && QGuiApplication::applicationState() == Qt::ApplicationActive;
}

bool QtWindowScene::isConnected() const { return QCoreApplication::instance() != nullptr; }

}  // namespace tarnix::qt6
