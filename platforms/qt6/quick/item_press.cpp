#include "platforms/qt6/quick/item_press.h"

#include <QMetaMethod>
#include <cstring>
#include <vector>

#include "platforms/qt6/quick/item_class.h"
#include "platforms/qt6/quick/item_description.h"
#include "platforms/qt6/quick/paint_order.h"
#include "platforms/qt6/shared/class_name.h"

namespace tarnix::qt6 {

namespace {

// Far below what the stack of a thread holds, far above what people build.
constexpr int deepest = 1'000;

/// What an item itself makes of a press.
enum class Reaction {
  passesOn,
  keeps,
  reacts,
  /// And lets it through to what is behind.
  reactsAndPassesOn,
};

constexpr Reaction reactsIf(bool reacts) { return reacts ? Reaction::reacts : Reaction::passesOn; }
constexpr Reaction keepsUnless(bool reacts) { return reacts ? Reaction::reacts : Reaction::keeps; }

bool isA(const QObject& object, const char* className) {
  return isDerivedFrom(object.metaObject(), className);
}

// Whether anybody listens is for derived classes only.
struct OpenObject : QObject {
  static bool listensAnybody(const QObject& object, const char* signal) {
    const int index = object.metaObject()->indexOfSignal(signal);
    return index >= 0 &&
           (object.*&OpenObject::isSignalConnected)(object.metaObject()->method(index));
  }
};

bool areaIsListenedTo(const QQuickItem& area) {
  for (const char* signal :
       {"clicked(QQuickMouseEvent*)", "pressed(QQuickMouseEvent*)", "released(QQuickMouseEvent*)",
        "pressedChanged()", "pressedButtonsChanged()", "containsPressChanged()"}) {
    if (OpenObject::listensAnybody(area, signal)) {
      return true;
    }
  }
  return false;
}

/// The days of a month are painted by items that take no press, with nothing between them.
bool isOverDay(const QQuickItem& grid, QPointF point) {
  const auto* const content = grid.property("contentItem").value<QQuickItem*>();
  const QPointF inside = content == nullptr ? QPointF() : grid.mapToItem(content, point);
  return content != nullptr && content->childAt(inside.x(), inside.y()) != nullptr;
}

bool monthIsListenedTo(const QQuickItem& grid) {
  for (const char* signal : {"clicked(QDate)", "pressed(QDate)", "released(QDate)"}) {
    if (OpenObject::listensAnybody(grid, signal)) {
      return true;
    }
  }
  return false;
}

bool isOverLink(QQuickItem& text, QPointF point) {
  QString link;
  QMetaObject::invokeMethod(&text, "linkAt", Qt::DirectConnection, Q_RETURN_ARG(QString, link),
                            Q_ARG(qreal, point.x()), Q_ARG(qreal, point.y()));
  return !link.isEmpty() && OpenObject::listensAnybody(text, "linkActivated(QString)");
}

bool isOverArrow(QQuickItem& spinBox, QPointF point) {
  for (const char* side : {"up", "down"}) {
    const auto* const arrow = spinBox.property(side).value<QObject*>();
    auto* const indicator =
        arrow == nullptr ? nullptr : arrow->property("indicator").value<QQuickItem*>();
    if (indicator != nullptr && indicator->contains(spinBox.mapToItem(indicator, point))) {
      return true;
    }
  }
  return false;
}

/// What lies over a window while popups are open: a press beside them closes the one in front, if
/// that one lets it.
Reaction reactionOfOverlay(const QQuickItem& overlay) {
  const QList<QQuickItem*> popups = inPaintOrder(overlay);
  for (auto popup = popups.rbegin(); popup != popups.rend(); ++popup) {
    if (!(*popup)->isVisible() || !isA(**popup, "QQuickPopupItem") ||
        (*popup)->QObject::parent() == nullptr) {
      continue;
    }
    const QObject& control = *(*popup)->QObject::parent();
    // CloseOnPressOutside, CloseOnPressOutsideParent, and the same for releases.
    constexpr int closesOutside = 0x0F;
    if ((control.property("closePolicy").toInt() & closesOutside) != 0) {
      // A popup that is not modal lets the press through to what it reaches then.
      return control.property("modal").toBool() ? Reaction::reacts : Reaction::reactsAndPassesOn;
    }
    if (control.property("modal").toBool()) {
      return Reaction::keeps;
    }
  }
  return Reaction::passesOn;
}

/// Of items that are none of the known controls.
Reaction reactionOfPlain(const QQuickItem& item, QPointF point) {
  if (isA(item, "QQuickMouseArea")) {
    return item.property("enabled").toBool() ? keepsUnless(areaIsListenedTo(item))
                                             : Reaction::passesOn;
  }
  if (isA(item, "QQuickMultiPointTouchArea")) {
    return reactsIf(item.property("mouseEnabled").toBool());
  }
  if (isA(item, "QQuickMonthGrid")) {
    return keepsUnless(isOverDay(item, point) && monthIsListenedTo(item));
  }
  if (isA(item, "QQuickPageIndicator")) {
    return reactsIf(item.property("interactive").toBool());
  }
  if (isA(item, "QQuickOverlay")) {
    return reactionOfOverlay(item);
  }
  if (isA(item, "QQuickPane") || isA(item, "QQuickPopupItem")) {
    return Reaction::keeps;
  }
  // The nearest class that is not declared in QML. The library's own that are left here react to
  // nothing; an application's asks for presses to react to them.
  const QMetaObject* metaObject = item.metaObject();
  while (metaObject->superClass() != nullptr &&
         std::strstr(metaObject->className(), "_QML") != nullptr) {
    metaObject = metaObject->superClass();
  }
  return reactsIf(std::strncmp(metaObject->className(), "QQuick", 6) != 0);
}

Reaction reactionOf(QQuickItem& item, QPointF point) {
  if (!item.acceptedMouseButtons().testFlag(Qt::LeftButton)) {
    return Reaction::passesOn;
  }
  switch (classOf(item).kind) {
    case ItemKind::button:
    case ItemKind::toggle:
    case ItemKind::tab:
    case ItemKind::menuEntry:
    case ItemKind::comboBox:
    case ItemKind::rangeSlider:
    case ItemKind::searchField:
    case ItemKind::textInput:
    case ItemKind::textEdit:
      return Reaction::reacts;
    case ItemKind::adjustable:
      if (isA(item, "QQuickTumbler")) {
        return Reaction::passesOn;
      }
      return reactsIf(!isA(item, "QQuickScrollBar") || item.property("interactive").toBool());
    case ItemKind::spinBox:
      return keepsUnless(isOverArrow(item, point));
    case ItemKind::text:
      return reactsIf(isOverLink(item, point));
    case ItemKind::flickable:
    case ItemKind::itemView:
    case ItemKind::tableView:
    case ItemKind::headerView:
    case ItemKind::pathView:
      return item.property("interactive").toBool() ? Reaction::keeps : Reaction::passesOn;
    case ItemKind::progressBar:
    case ItemKind::image:
    case ItemKind::rectangle:
    case ItemKind::tabBar:
    case ItemKind::groupBox:
    case ItemKind::plain:
      break;
  }
  return reactionOfPlain(item, point);
}

/// A table takes presses on its cells to choose one, by a handler of its own, also where none can
/// be chosen.
bool isTableWithoutChoice(const QQuickItem& content) {
  const QQuickItem* const table = content.parentItem();
  return table != nullptr && isA(*table, "QQuickTableView") &&
         table->property("selectionModel").value<QObject*>() == nullptr &&
         table->property("contentItem").value<QQuickItem*>() == &content;
}

/// `isKept`: an item in front has taken the press. Handlers that only look on see it all the same.
bool hasTapHandler(const QQuickItem& item, bool isKept) {
  for (const QObject* child : item.children()) {
    if (!isA(*child, "QQuickTapHandler") || !child->property("enabled").toBool() ||
        isTableWithoutChoice(item)) {
      continue;
    }
    constexpr int dragThreshold = 0;
    const auto buttons = static_cast<Qt::MouseButtons>(child->property("acceptedButtons").toInt());
    if ((buttons == Qt::NoButton || buttons.testFlag(Qt::LeftButton)) &&
        (!isKept || child->property("gesturePolicy").toInt() == dragThreshold)) {
      return true;
    }
  }
  return false;
}

/// Handlers that look on at what a finger does, whoever takes the press.
bool hasPointHandler(const QQuickItem& item) {
  for (const QObject* child : item.children()) {
    if (isA(*child, "QQuickPointHandler") && child->property("enabled").toBool() &&
        static_cast<Qt::MouseButtons>(child->property("acceptedButtons").toInt())
            .testFlag(Qt::LeftButton)) {
      return true;
    }
  }
  return false;
}

/// Front to back: all items that hold the point, as the toolkit's own delivery visits them.
class Targets {
 public:
  explicit Targets(QPointF scenePoint) : scenePoint_(scenePoint) {}

  void collect(QQuickItem& item, int depth) {
    const bool holds = item.contains(item.mapFromScene(scenePoint_));
    if (depth > deepest || (item.clip() && !holds)) {
      return;
    }
    const QList<QQuickItem*> children = inPaintOrder(item);
    auto child = children.rbegin();
    for (; child != children.rend() && (*child)->z() >= 0; ++child) {
      enter(**child, depth);
    }
    if (holds) {
      items_.push_back(&item);
    }
    for (; child != children.rend(); ++child) {
      enter(**child, depth);
    }
  }

  const std::vector<QQuickItem*>& items() const { return items_; }

 private:
  // What is disabled lets everything through to what is behind it.
  void enter(QQuickItem& item, int depth) {
    if (item.isVisible() && item.isEnabled()) {
      collect(item, depth + 1);
    }
  }

  QPointF scenePoint_;
  std::vector<QQuickItem*> items_;
};

}  // namespace

Press::Effect effectOfPress(QQuickItem& item, QPointF point) {
  if (!item.isEnabled() || !item.isVisible()) {
    return Press::Effect::none;
  }
  if (hasTapHandler(item, false) || hasPointHandler(item)) {
    return Press::Effect::tapHandler;
  }
  return reactionOf(item, point) == Reaction::reacts ? Press::Effect::control : Press::Effect::none;
}

Press pressAt(QQuickItem& root, QPointF scenePoint) {
  Targets targets(scenePoint);
  targets.collect(root, 0);
  QQuickItem* front = nullptr;
  QQuickItem* reactingInFront = nullptr;
  QQuickItem* lookingOn = nullptr;
  bool isKept = false;
  for (QQuickItem* item : targets.items()) {
    const Reaction reaction =
        isKept ? Reaction::passesOn : reactionOf(*item, item->mapFromScene(scenePoint));
    if (reaction == Reaction::reacts) {
      return {item, Press::Effect::control};
    }
    if (hasTapHandler(*item, isKept)) {
      return {item, Press::Effect::tapHandler};
    }
    if (reaction == Reaction::reactsAndPassesOn && reactingInFront == nullptr) {
      reactingInFront = item;
    }
    if (lookingOn == nullptr && hasPointHandler(*item)) {
      lookingOn = item;
    }
    if (front == nullptr) {
      front = item;
    }
    if (reaction == Reaction::keeps) {
      // What keeps a press is what a person has under the finger, whatever is drawn over it.
      front = isKept ? front : item;
      isKept = true;
    }
  }
  if (reactingInFront != nullptr) {
    return {reactingInFront, Press::Effect::control};
  }
  if (lookingOn != nullptr) {
    return {lookingOn, Press::Effect::tapHandler};
  }
  return {front, Press::Effect::none};
}

}  // namespace tarnix::qt6
