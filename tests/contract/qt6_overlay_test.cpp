#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>
#include <functional>
#include <optional>
#include <thread>
#include <utility>

#include "platforms/qt6/base/window_order.h"
#include "platforms/qt6/shared/picture_without_overlay.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/contract/qt6_overlay_support.h"

/// What the toolkit must not notice of what is drawn over its windows.
namespace tarnix::contract {
namespace {

class Form : public QWidget {
 public:
  Form() {
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(&field);
    layout->addWidget(&button);
    resize(400, 300);
  }

  std::vector<QEvent::Type> childEvents;
  QLineEdit field;
  QPushButton button{"Save"};

 protected:
  void childEvent(QChildEvent* event) override {
    childEvents.push_back(event->type());
    QWidget::childEvent(event);
  }
};

/// All that a window is told while it lives, but for what comes by itself.
class EventCounter : public QObject {
 public:
  explicit EventCounter(QWidget& window) {
    window.installEventFilter(this);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
      widget->installEventFilter(this);
    }
  }

  int count = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Timer ? 0 : 1;
    return false;
  }
};

TEST(Qt6WidgetOverlay, IsDrawnInFrontAndGoesWithoutATrace) {
  const auto form = shown(std::make_unique<Form>());
  QApplication::setCursorFlashTime(0);
  letPass(std::chrono::milliseconds(20));
  const QImage before = seen(*form);
  const QObjectList childrenBefore = form->children();
  const EventCounter events(*form);
  {
    Overlay overlay;
    overlay.show(squareAt({150, 100}));
    EXPECT_TRUE(isRed(seen(*form), {175, 125}));
    EXPECT_EQ(form->children(), childrenBefore) << "no child stands for it";
    overlay.show(squareAt({10, 10}));
    const QImage moved = seen(*form);
    EXPECT_TRUE(isRed(moved, {35, 35}));
    EXPECT_EQ(moved.pixel(175, 125), before.pixel(175, 125));
  }
  EXPECT_EQ(seen(*form), before);
  EXPECT_EQ(form->children(), childrenBefore);
  EXPECT_EQ(events.count, 0) << "the application was asked for nothing";
  EXPECT_FALSE(form->windowHandle()->property(qt6::overlayPaneProperty).isValid());
}

TEST(Qt6WidgetOverlay, StaysWhileTheApplicationPaints) {
  const auto form = shown(std::make_unique<Form>());
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  // Beside it, under all of it, and under half.
  for (const QRect& area : {QRect(0, 0, 60, 60), form->rect(), QRect(0, 0, 175, 300)}) {
    form->repaint(area);
    for (QWidget* part :
         {static_cast<QWidget*>(&form->field), static_cast<QWidget*>(&form->button)}) {
      part->repaint();
    }
    EXPECT_TRUE(isRed(seen(*form), {160, 125}));
    EXPECT_TRUE(isRed(seen(*form), {190, 125}));
  }
  form->button.setText("Other");
  form->button.repaint();
  overlay.show({});
  EXPECT_EQ(seen(*form), form->grab().toImage()) << "what was painted meanwhile is under it";
}

TEST(Qt6WidgetOverlay, KeepsWhatIsPaintedRightBesideIt) {
  const auto form = shown(std::make_unique<QWidget>());
  form->resize(400, 300);
  QLabel beside("beside", form.get());
  beside.setAutoFillBackground(true);
  beside.setGeometry(201, 60, 100, 130);
  beside.show();
  letPass(std::chrono::milliseconds(20));
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  beside.setBackgroundRole(QPalette::Highlight);
  letPass(std::chrono::milliseconds(20));
  platform::DisplayList other = squareAt({150, 100});
  other[0][0].opacity = 0.5;
  overlay.show(other);
  overlay.show({});
  EXPECT_EQ(seen(*form), form->grab().toImage());
}

/// Does something else in the middle of painting itself.
class Busy : public QWidget {
 public:
  std::function<void()> other;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).fillRect(rect(), Qt::white);
    if (const std::function<void()> once = std::exchange(other, nullptr)) {
      once();
    }
    QPainter(this).fillRect(rect(), Qt::darkGreen);
  }
};

TEST(Qt6WidgetOverlay, StaysWhileOneWidgetIsPaintedFromAnother) {
  const auto form = shown(std::make_unique<Form>());
  Busy busy;
  busy.setParent(form.get());
  busy.setGeometry(10, 10, 50, 50);
  busy.show();
  letPass(std::chrono::milliseconds(20));
  Overlay overlay;
  overlay.show(squareAt({150, 130}));
  busy.other = [&form] { form->repaint(100, 120, 80, 60); };
  busy.repaint();
  EXPECT_TRUE(isRed(seen(*form), {160, 155}));
  EXPECT_TRUE(isRed(seen(*form), {190, 155}));
  overlay.show({});
  EXPECT_EQ(seen(*form), form->grab().toImage());
}

TEST(Qt6WidgetOverlay, MayComeWhileTheApplicationPaints) {
  const auto window = shown(std::make_unique<Busy>());
  window->resize(400, 300);
  letPass(std::chrono::milliseconds(20));
  std::optional<Overlay> overlay;
  window->other = [&overlay] { overlay.emplace().show(squareAt({150, 100})); };
  window->repaint();
  EXPECT_TRUE(isRed(seen(*window), {175, 125}));
  overlay.reset();
  EXPECT_EQ(seen(*window), window->grab().toImage());
}

/// As a screen that a window is moved to may have it, the next picture is of another size.
void setScaleOfScreen(double factor) {
  const auto set = reinterpret_cast<void (*)(QScreen*, double)>(
      ::dlsym(RTLD_DEFAULT, "_ZN15QHighDpiScaling15setScreenFactorEP7QScreend"));
  ASSERT_NE(set, nullptr);
  set(QGuiApplication::primaryScreen(), factor);
}

TEST(Qt6WidgetOverlay, FollowsToAScreenOfAnotherScale) {
  setScaleOfScreen(2);
  const auto form = shown(std::make_unique<Form>());
  {
    Overlay overlay;
    overlay.show(squareAt({340, 240}));
    const auto picture = [&form]() -> const QImage& {
      return *static_cast<const QImage*>(form->backingStore()->paintDevice());
    };
    EXPECT_TRUE(isRed(picture(), {730, 530}));
    setScaleOfScreen(1);
    form->repaint();
    EXPECT_EQ(picture().size(), form->size());
    EXPECT_TRUE(isRed(picture(), {365, 265}));
    setScaleOfScreen(2);
    form->repaint();
    setScaleOfScreen(1);
    // Before the application paints.
    overlay.show(squareAt({340, 230}));
    form->repaint();
    EXPECT_TRUE(isRed(picture(), {365, 235}));
  }
  EXPECT_EQ(seen(*form), form->grab().toImage());
}

TEST(Qt6WidgetOverlay, StaysWhereItIsWhenTheApplicationScrolls) {
  auto area = std::make_unique<QScrollArea>();
  auto* const content = new QWidget;
  auto* const layout = new QVBoxLayout(content);
  for (int line = 0; line < 60; ++line) {
    layout->addWidget(new QLabel(QString("line %1").arg(line)));
  }
  area->setWidget(content);
  area->resize(400, 300);
  area = shown(std::move(area));
  Overlay overlay;
  overlay.show(squareAt({20, 100}));
  for (const int place : {30, 75, 10}) {
    area->verticalScrollBar()->setValue(place);
    const QImage picture = seen(*area);
    EXPECT_TRUE(isRed(picture, {45, 125}));
    EXPECT_FALSE(isRed(picture, {45, 80}));
    EXPECT_FALSE(isRed(picture, {45, 170}));
  }
  overlay.show({});
  EXPECT_EQ(seen(*area), area->grab().toImage());
}

TEST(Qt6WidgetOverlay, TakesNoMouseNoFocusAndNoPlace) {
  const auto form = shown(std::make_unique<Form>());
  form->field.setFocus();
  const QRect field = form->field.geometry();
  const QRect button = form->button.geometry();
  form->childEvents.clear();
  QWidget* const after = form->button.nextInFocusChain();
  {
    Overlay overlay;
    overlay.show(squareAt({150, 100}));
    letPass(std::chrono::milliseconds(20));
    EXPECT_EQ(form->childAt(button.center()), &form->button);
    EXPECT_EQ(QApplication::focusWidget(), &form->field);
    EXPECT_EQ(form->field.geometry(), field);
    EXPECT_EQ(form->button.geometry(), button);
    EXPECT_EQ(form->layout()->count(), 2);
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(form.get());
    EXPECT_EQ(spoken->childCount(), 2);
    EXPECT_FALSE(isRed(form->grab().toImage(), {175, 125})) << "no picture of its own has it";
    form->field.nextInFocusChain();
    EXPECT_EQ(form->focusWidget(), &form->field);
  }
  EXPECT_TRUE(form->childEvents.empty()) << "its window never learns of it";
  EXPECT_EQ(form->button.nextInFocusChain(), after);
}

TEST(Qt6WidgetOverlay, IsNotAdoptedByASplitter) {
  auto splitter = std::make_unique<QSplitter>();
  splitter->addWidget(new QLabel("left"));
  splitter->addWidget(new QLabel("right"));
  splitter->resize(400, 300);
  splitter = shown(std::move(splitter));
  const QList<int> sizes = splitter->sizes();
  {
    Overlay overlay;
    overlay.show(squareAt({150, 100}));
    letPass(std::chrono::milliseconds(20));
    EXPECT_EQ(splitter->count(), 2);
    EXPECT_EQ(splitter->sizes(), sizes);
    EXPECT_TRUE(isRed(seen(*splitter), {175, 125}));
    splitter->resize(500, 320);
    overlay.show(squareAt({440, 260}));
    EXPECT_TRUE(isRed(seen(*splitter), {465, 285}));
  }
  EXPECT_EQ(splitter->count(), 2);
}

TEST(Qt6WidgetOverlay, StaysInFrontOfWhatComesLater) {
  const auto form = shown(std::make_unique<Form>());
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  QLabel late("late", form.get());
  late.setAutoFillBackground(true);
  late.setGeometry(form->rect());
  late.show();
  overlay.show(squareAt({150, 101}));
  EXPECT_TRUE(isRed(seen(*form), {175, 125}));
}

TEST(Qt6WidgetOverlay, IsNotInOurPictures) {
  const auto form = shown(std::make_unique<Form>());
  const QImage before = seen(*form);
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  {
    const qt6::PictureWithoutOverlay hidden(*form->windowHandle());
    EXPECT_EQ(seen(*form), before);
  }
  EXPECT_TRUE(isRed(seen(*form), {175, 125}));
}

TEST(Qt6WidgetOverlay, LeavesAWindowThatIsHidden) {
  const auto behind = shown(std::make_unique<Form>());
  const auto form = shown(std::make_unique<Form>());
  const qsizetype childrenBefore = form->children().size();
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  EXPECT_TRUE(form->windowHandle()->property(qt6::overlayPaneProperty).isValid());
  form->hide();
  behind->activateWindow();
  pumpUntil([&] { return behind->isActiveWindow(); });
  overlay.show(squareAt({150, 100}));
  EXPECT_FALSE(form->windowHandle()->property(qt6::overlayPaneProperty).isValid());
  EXPECT_EQ(form->children().size(), childrenBefore);
}

TEST(Qt6WidgetOverlay, SurvivesItsWindow) {
  auto form = shown(std::make_unique<Form>());
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  form = nullptr;
  overlay.show(squareAt({150, 100}));
  EXPECT_FALSE(overlay.place);
}

TEST(Qt6WidgetOverlay, FollowsToADialogAndKeepsItsPlaceOnTheDesktop) {
  const auto form = shown(std::make_unique<Form>());
  form->move(20, 30);
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  auto dialog = std::make_unique<QDialog>(form.get());
  dialog->setGeometry(form->geometry().x() + 100, form->geometry().y() + 80, 200, 150);
  dialog = shown(std::move(dialog));
  overlay.show(squareAt({50, 20}));
  const QPoint between = form->geometry().topLeft() - dialog->geometry().topLeft();
  EXPECT_EQ(overlay.place->movedBy,
            (platform::Point{static_cast<double>(between.x()), static_cast<double>(between.y())}));
  EXPECT_EQ(overlay.place->size.width, 200);
  EXPECT_TRUE(isRed(seen(*dialog), {75, 45}));
  EXPECT_TRUE(isRed(seen(*form), QPoint(75, 45) - between))
      << "the same place, in the window behind";
}

TEST(Qt6QuickOverlay, IsDrawnInFrontAndGoesWithoutATrace) {
  QuickHostWorld world;
  world.show({.size = {400, 300}, .things = {{.label = "Save", .frame = {{150, 100}, {100, 40}}}}});
  auto* const window = qobject_cast<QQuickWindow*>(qt6::WindowOrder::shared().keyWindow());
  ASSERT_NE(window, nullptr);
  const QImage before = window->grabWindow();
  QQuickItem* const root = window->contentItem();
  const qsizetype itemsBefore = root->childItems().size();
  const qsizetype objectsBefore = window->findChildren<QQuickItem*>().size();
  const QRectF extent = root->childrenRect();
  QQuickItem* const under = root->childAt(175, 125);
  int childChanges = 0;
  QObject::connect(root, &QQuickItem::childrenChanged, root, [&] { ++childChanges; });
  {
    Overlay overlay;
    overlay.show(squareAt({150, 100}));
    EXPECT_TRUE(isRed(window->grabWindow(), {175, 125}));
    EXPECT_EQ(root->childAt(175, 125), under);
    EXPECT_EQ(root->childAt(10, 10), nullptr);
    EXPECT_EQ(root->childrenRect(), extent);
    EXPECT_EQ(window->findChildren<QQuickItem*>().size(), objectsBefore);
    {
      const qt6::PictureWithoutOverlay hidden(*window);
      EXPECT_EQ(window->grabWindow(), before);
    }
    EXPECT_TRUE(isRed(window->grabWindow(), {175, 125}));
    overlay.show(squareAt({10, 10}));
    EXPECT_TRUE(isRed(window->grabWindow(), {35, 35}));
    letPass(std::chrono::milliseconds(1));
    EXPECT_EQ(root->childItems().size(), itemsBefore) << "no item stands for it";
  }
  EXPECT_EQ(window->grabWindow(), before);
  EXPECT_EQ(root->childItems().size(), itemsBefore);
  EXPECT_EQ(childChanges, 0);
}

TEST(Qt6QuickOverlay, MovesNoFocus) {
  QuickHostWorld world;
  world.show(
      {.things = {{.kind = Thing::Kind::field, .label = "Name", .frame = {{10, 10}, {200, 40}}}}});
  auto* const window = qobject_cast<QQuickWindow*>(qt6::WindowOrder::shared().keyWindow());
  window->contentItem()->childItems().first()->forceActiveFocus();
  QQuickItem* const focused = window->activeFocusItem();
  int changes = 0;
  QObject::connect(window, &QQuickWindow::activeFocusItemChanged, window, [&] { ++changes; });
  {
    Overlay overlay;
    overlay.show(squareAt({150, 100}));
    letPass(std::chrono::milliseconds(20));
  }
  EXPECT_EQ(window->activeFocusItem(), focused);
  EXPECT_EQ(changes, 0);
}

TEST(Qt6QuickOverlay, AsksForNoFrameWhileAnotherThreadIsAtOne) {
  QuickHostWorld world;
  world.show({.size = {400, 300}});
  auto* const window = qobject_cast<QQuickWindow*>(qt6::WindowOrder::shared().keyWindow());
  ASSERT_NE(window, nullptr);
  int frames = 0;
  QObject::connect(window, &QQuickWindow::afterRendering, window, [&] { ++frames; });
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  ASSERT_TRUE(world.pumpUntil([&] { return frames > 0; }));
  letPass(std::chrono::milliseconds(20));
  const auto elsewhere = [](const auto& signal) { std::thread(signal).join(); };
  elsewhere([&] { Q_EMIT window->afterSynchronizing(); });
  const int before = frames;
  overlay.show(squareAt({10, 10}));
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(frames, before);
  elsewhere([&] { Q_EMIT window->frameSwapped(); });
  EXPECT_TRUE(world.pumpUntil([&] { return frames > before; }));
  EXPECT_TRUE(isRed(window->grabWindow(), {35, 35}));
}

TEST(Qt6QuickOverlay, SurvivesItsWindow) {
  QuickHostWorld world;
  world.show({});
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  world.removeAll();
  overlay.show(squareAt({150, 100}));
  EXPECT_FALSE(overlay.place);
}

}  // namespace
}  // namespace tarnix::contract
