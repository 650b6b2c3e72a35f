#include "tests/contract/qt6_host_world.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGraphicsOpacityEffect>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QQmlComponent>
#include <QQuickItem>
#include <QScrollArea>

#include "platforms/linux/preload/interposed_calls.h"
#include "platforms/qt6/base/host_services.h"
#include "platforms/qt6/base/part_loader.h"
#include "platforms/qt6/quick/quick_part.h"
#include "platforms/qt6/widgets/widgets_part.h"

namespace tarnix::contract {

namespace {

/// What a button counts its clicks in.
constexpr const char* clickCount = "clickCount";

QRect rectOf(const platform::Rect& frame) {
  return QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect();
}

bool isExposed(const QWindow* window) { return window != nullptr && window->isExposed(); }

QWidget* widgetOf(const Thing& thing, QWidget& parent) {
  const QString label = QString::fromStdString(thing.label);
  switch (thing.kind) {
    case Thing::Kind::button: {
      auto* const button = new QPushButton(label, &parent);
      QObject::connect(button, &QPushButton::clicked, button, [button] {
        button->setProperty(clickCount, button->property(clickCount).toInt() + 1);
      });
      return button;
    }
    case Thing::Kind::label:
      return new QLabel(label, &parent);
    case Thing::Kind::field: {
      auto* const field = new QLineEdit(&parent);
      field->setPlaceholderText(label);
      field->setText(QString::fromStdString(thing.value.value_or("")));
      return field;
    }
    case Thing::Kind::scroller: {
      auto* const area = new QScrollArea(&parent);
      auto* const content = new QWidget;
      content->resize(static_cast<int>(Thing::scrolledSize.width),
                      static_cast<int>(Thing::scrolledSize.height));
      area->setWidget(content);
      return area;
    }
  }
  return nullptr;
}

QByteArray declarationOf(Thing::Kind kind) {
  switch (kind) {
    case Thing::Kind::button:
      return "Button { property int clickCount: 0; onClicked: ++clickCount }";
    case Thing::Kind::label:
      return "Label {}";
    case Thing::Kind::field:
      return "TextField {}";
    case Thing::Kind::scroller:
      return "Flickable { contentWidth: 1000; contentHeight: 800 }";
  }
  return "Item {}";
}

QQuickItem* itemOf(const Thing& thing, QQuickWindow& window, QQmlEngine& engine) {
  QQmlComponent component(&engine);
  component.setData("import QtQuick\nimport QtQuick.Controls\n" + declarationOf(thing.kind),
                    QUrl());
  auto* const item = qobject_cast<QQuickItem*>(component.create());
  const QString label = QString::fromStdString(thing.label);
  item->setProperty(thing.kind == Thing::Kind::field ? "placeholderText" : "text", label);
  if (thing.value) {
    item->setProperty("text", QString::fromStdString(*thing.value));
  }
  item->setPosition({thing.frame.origin.x, thing.frame.origin.y});
  item->setSize({thing.frame.size.width, thing.frame.size.height});
  item->setVisible(!thing.isHidden);
  item->setEnabled(!thing.isDisabled);
  item->setOpacity(thing.opacity);
  item->setParentItem(window.contentItem());
  item->setParent(&window);
  return item;
}

}  // namespace

const HostServices& qt6Services() {
  static const HostServices& services = [&]() -> const HostServices& {
    qt6::PartLoader& loader = qt6::PartLoader::shared();
    const HostServices& installed = qt6::installHostServices(nullptr);
    loader.start(&linux_platform::interposedCalls());
    loader.add(new qt6::WidgetsPart(loader));
    loader.add(&qt6::QuickPart::shared());
    return installed;
  }();
  return services;
}

bool pumpUntil(const std::function<bool()>& condition) {
  constexpr int deadline = 10'000;
  QElapsedTimer timer;
  timer.start();
  while (!condition() && !timer.hasExpired(deadline)) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 5);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return condition();
}

void letPass(std::chrono::milliseconds duration) {
  QElapsedTimer timer;
  timer.start();
  pumpUntil([&] { return timer.elapsed() >= duration.count(); });
}

void WidgetsHostWorld::show(const ScreenDescription& screen) {
  auto* const window = new QWidget;
  window->resize(static_cast<int>(screen.size.width), static_cast<int>(screen.size.height));
  for (const Thing& thing : screen.things) {
    QWidget* const widget = widgetOf(thing, *window);
    widget->setGeometry(rectOf(thing.frame));
    widget->setVisible(!thing.isHidden);
    widget->setEnabled(!thing.isDisabled);
    if (thing.opacity < 1) {
      auto* const effect = new QGraphicsOpacityEffect(widget);
      effect->setOpacity(thing.opacity);
      widget->setGraphicsEffect(effect);
    }
  }
  window->show();
  window->activateWindow();
  windows_.emplace_back(window);
  pumpUntil([&] { return isExposed(window->windowHandle()) && window->isActiveWindow(); });
}

void WidgetsHostWorld::showSecondWindow() {
  auto* const window = new QWidget;
  window->setAttribute(Qt::WA_ShowWithoutActivating);
  window->setGeometry(500, 100, 100, 100);
  window->show();
  windows_.emplace_back(window);
  pumpUntil([&] { return isExposed(window->windowHandle()); });
  // This platform activates every window that it shows.
  windows_.front()->activateWindow();
  pumpUntil([&] { return windows_.front()->isActiveWindow(); });
}

void WidgetsHostWorld::removeAll() {
  for (const QPointer<QWidget>& window : windows_) {
    delete window;
  }
  windows_.clear();
}

int WidgetsHostWorld::clicks(const std::string& label) const {
  for (const auto* button : windows_.front()->findChildren<QPushButton*>()) {
    if (button->text() == QString::fromStdString(label)) {
      return button->property(clickCount).toInt();
    }
  }
  return 0;
}

void QuickHostWorld::show(const ScreenDescription& screen) {
  auto* const window = new QQuickWindow;
  window->resize(static_cast<int>(screen.size.width), static_cast<int>(screen.size.height));
  for (const Thing& thing : screen.things) {
    itemOf(thing, *window, engine_);
  }
  window->show();
  window->requestActivate();
  windows_.emplace_back(window);
  pumpUntil([&] { return window->isExposed() && window->isActive(); });
}

void QuickHostWorld::showSecondWindow() {
  auto* const window = new QQuickWindow;
  window->setGeometry(500, 100, 100, 100);
  window->show();
  windows_.emplace_back(window);
  pumpUntil([&] { return window->isExposed(); });
  windows_.front()->requestActivate();
  pumpUntil([&] { return windows_.front()->isActive(); });
}

int QuickHostWorld::clicks(const std::string& label) const {
  for (const auto* item : windows_.front()->contentItem()->childItems()) {
    if (item->property("text") == QString::fromStdString(label)) {
      return item->property(clickCount).toInt();
    }
  }
  return 0;
}

void QuickHostWorld::removeAll() {
  for (const QPointer<QQuickWindow>& window : windows_) {
    delete window;
  }
  windows_.clear();
}

}  // namespace tarnix::contract
