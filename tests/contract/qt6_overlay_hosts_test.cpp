#include <gtest/gtest.h>

#include <QApplication>
#include <QBackingStore>
#include <QDockWidget>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QQuickWindow>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedLayout>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolBox>
#include <QWizard>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platforms/qt6/base/window_picture.h"
#include "platforms/qt6/shared/picture_without_overlay.h"
#include "tests/contract/qt6_overlay_support.h"

/// Windows of kinds that take every child for one of their own, and windows of more than one part.
namespace tarnix::contract {
namespace {

using Window = std::unique_ptr<QWidget>;

struct Host {
  const char* name;
  std::function<Window()> make;
  /// What it counts as its own.
  std::function<int(const QWidget&)> count;
};

template <class Widget>
std::function<int(const QWidget&)> countOf() {
  return [](const QWidget& window) { return static_cast<const Widget&>(window).count(); };
}

template <class Widget, class Add>
std::function<Window()> filled(Add add) {
  return [add]() -> Window {
    auto window = std::make_unique<Widget>();
    for (const char* text : {"first", "second"}) {
      add(*window, new QLabel(text));
    }
    return window;
  };
}

Window makeMainWindow() {
  auto window = std::make_unique<QMainWindow>();
  window->addToolBar("Tools")->addAction("Go");
  auto* const dock = new QDockWidget("Side", window.get());
  dock->setWidget(new QLabel("side"));
  window->addDockWidget(Qt::LeftDockWidgetArea, dock);
  window->statusBar()->showMessage("ready");
  window->setCentralWidget(new QLineEdit("middle"));
  return window;
}

Window makeWizard() {
  auto window = std::make_unique<QWizard>();
  for (const char* title : {"One", "Two"}) {
    auto* const page = new QWizardPage;
    page->setTitle(title);
    (new QFormLayout(page))->addRow("Name", new QLineEdit);
    window->addPage(page);
  }
  return window;
}

std::vector<Host> hosts() {
  return {
      {"splitter",
       filled<QSplitter>([](QSplitter& window, QWidget* part) { window.addWidget(part); }),
       countOf<QSplitter>()},
      {"stacked", filled<QStackedWidget>([](QStackedWidget& window, QWidget* part) {
         window.addWidget(part);
       }),
       countOf<QStackedWidget>()},
      {"tabs",
       filled<QTabWidget>([](QTabWidget& window, QWidget* part) { window.addTab(part, "tab"); }),
       countOf<QTabWidget>()},
      {"tool box",
       filled<QToolBox>([](QToolBox& window, QWidget* part) { window.addItem(part, "item"); }),
       countOf<QToolBox>()},
      {"several documents", filled<QMdiArea>([](QMdiArea& window, QWidget* part) {
         window.addSubWindow(part)->resize(150, 100);
       }),
       [](const QWidget& window) {
         return static_cast<int>(static_cast<const QMdiArea&>(window).subWindowList().size());
       }},
      {"scroll area",
       filled<QScrollArea>([](QScrollArea& window, QWidget* part) { window.setWidget(part); }),
       [](const QWidget& window) {
         return static_cast<const QScrollArea&>(window).widget() == nullptr ? 0 : 1;
       }},
      {"stacked layout",
       [] {
         auto window = std::make_unique<QWidget>();
         auto* const layout = new QStackedLayout(window.get());
         layout->addWidget(new QPushButton("first"));
         layout->addWidget(new QPushButton("second"));
         return window;
       },
       [](const QWidget& window) { return window.layout()->count(); }},
      {"main window", makeMainWindow,
       [](const QWidget& window) { return window.layout()->count(); }},
      {"wizard", makeWizard,
       [](const QWidget& window) {
         return static_cast<int>(static_cast<const QWizard&>(window).pageIds().size());
       }},
  };
}

/// Everything that a layout decides.
std::string layoutOf(const QWidget& window) {
  std::ostringstream text;
  text << window.sizeHint().width() << "x" << window.sizeHint().height() << " at least "
       << window.minimumSizeHint().width() << "x" << window.minimumSizeHint().height() << "\n";
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    // What is hidden is laid out when it is first drawn.
    if (widget->isVisible()) {
      const QRect area = widget->geometry();
      text << widget->metaObject()->className() << " " << area.x() << "," << area.y() << " "
           << area.width() << "x" << area.height() << "\n";
    }
  }
  return text.str();
}

TEST(Qt6OverlayHosts, AreLaidOutAsWithoutIt) {
  for (const Host& host : hosts()) {
    SCOPED_TRACE(host.name);
    Window window = host.make();
    window->resize(400, 300);
    window = shown(std::move(window));
    letPass(std::chrono::milliseconds(50));
    const QImage picture = window->grab().toImage();
    const int count = host.count(*window);
    const qsizetype children = window->children().size();
    const std::string layout = layoutOf(*window);
    QWidget* const focused = window->focusWidget();
    {
      Overlay overlay;
      overlay.show(squareAt({150, 100}));
      letPass(std::chrono::milliseconds(20));
      EXPECT_TRUE(isRed(seen(*window), {175, 125}));
      EXPECT_EQ(host.count(*window), count);
      EXPECT_EQ(layoutOf(*window), layout);
      EXPECT_EQ(window->focusWidget(), focused);
      {
        const qt6::PictureWithoutOverlay hidden(*window->windowHandle());
        EXPECT_EQ(window->grab().toImage(), picture);
      }
      // It follows, and is not in the way of what is laid out anew.
      window->resize(460, 340);
      letPass(std::chrono::milliseconds(20));
      overlay.show(squareAt({400, 280}));
      EXPECT_TRUE(isRed(seen(*window), {425, 305}));
      EXPECT_EQ(host.count(*window), count);
      window->resize(400, 300);
      letPass(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(host.count(*window), count);
    EXPECT_EQ(window->children().size(), children);
    EXPECT_EQ(layoutOf(*window), layout);
    EXPECT_EQ(window->grab().toImage(), picture);
  }
}

TEST(Qt6OverlayHosts, ArePutTogetherWhileItIsThere) {
  auto splitter = std::make_unique<QSplitter>();
  splitter->resize(400, 300);
  splitter->addWidget(new QLabel("first"));
  splitter = shown(std::move(splitter));
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  splitter->addWidget(new QLabel("second"));
  letPass(std::chrono::milliseconds(20));
  EXPECT_EQ(splitter->count(), 2);
  EXPECT_EQ(splitter->widget(1)->metaObject()->className(), std::string("QLabel"));
  overlay.show(squareAt({150, 100}));
  EXPECT_TRUE(isRed(seen(*splitter), {175, 125}));
}

TEST(Qt6OverlayHosts, ShowItOverAMenuThatOpens) {
  auto window = std::make_unique<QWidget>();
  window->resize(400, 300);
  window = shown(std::move(window));
  Overlay overlay;
  overlay.show(squareAt({150, 100}));
  QMenu menu(window.get());
  for (int row = 0; row < 10; ++row) {
    menu.addAction("An entry of some length");
  }
  const int entries = static_cast<int>(menu.actions().size());
  menu.popup(window->mapToGlobal(QPoint(140, 90)));
  ASSERT_TRUE(pumpUntil([&menu] { return menu.isVisible(); }));
  overlay.show(squareAt({150, 100}));
  EXPECT_TRUE(isRed(seen(menu), QPoint(175, 125) - QPoint(140, 90)));
  EXPECT_EQ(menu.actions().size(), entries);
  EXPECT_EQ(QApplication::activePopupWidget(), &menu);
  menu.close();
  overlay.show(squareAt({150, 100}));
  EXPECT_TRUE(isRed(seen(*window), {175, 125}));
}

TEST(Qt6OverlayHosts, ShowItOverASceneInAContainer) {
  auto window = std::make_unique<QWidget>();
  window->resize(400, 300);
  auto* const scene = new QQuickWindow;
  QWidget::createWindowContainer(scene, window.get())->setGeometry(100, 50, 200, 200);
  window = shown(std::move(window));
  ASSERT_TRUE(pumpUntil([&] { return scene->isSceneGraphInitialized(); }));
  {
    Overlay overlay;
    overlay.show(squareAt({150, 100}));
    EXPECT_TRUE(isRed(scene->grabWindow(), {75, 75}));
    const std::optional<platform::Picture> picture = qt6::pictureOf(*window->windowHandle(), {});
    ASSERT_TRUE(picture);
    const std::uint8_t* const pixel = picture->pixels.get() + 125 * picture->stride + 175 * 4;
    EXPECT_GT(pixel[0], 200) << "ours is not in it";
  }
  EXPECT_FALSE(isRed(scene->grabWindow(), {75, 75}));
}

TEST(Qt6OverlayHosts, ReadTheSameWhicheverWayTheyAreLaidOut) {
  QImage pictures[2];
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    auto window = std::make_unique<QWidget>();
    QApplication::setLayoutDirection(direction);
    window->resize(200, 100);
    window = shown(std::move(window));
    Overlay overlay;
    overlay.show({{{.shape = platform::TextLine{{{10, 10}, {150, 36}},
                                                "12 at work!",
                                                {.size = 20},
                                                {1, 0, 0, 1},
                                                platform::TextLine::Alignment::leading}}}});
    pictures[direction] = seen(*window);
  }
  QApplication::setLayoutDirection(Qt::LeftToRight);
  EXPECT_EQ(pictures[Qt::LeftToRight], pictures[Qt::RightToLeft]);
}

/// Narrow stripes in black and white.
class Stripes : public QWidget {
 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    for (int x = 0; x < width(); ++x) {
      painter.fillRect(x, 0, 1, height(), x % 2 == 0 ? Qt::black : Qt::white);
    }
  }
};

TEST(Qt6OverlayHosts, AreSeenOutOfFocusBehindABackdrop) {
  auto window = std::make_unique<Stripes>();
  window->resize(200, 200);
  const auto shownWindow = shown(std::move(window));
  Overlay overlay;
  overlay.show({{{.shape = platform::Backdrop{{{0, 0}, {100, 60}}, 6, {0, 0, 1, 0.5}},
                  .transform = {1, {50, 50}}}}});
  ASSERT_TRUE(pumpUntil([&] { return seen(*shownWindow).pixelColor(100, 80).blue() > 150; }));
  const QImage picture = seen(*shownWindow);
  for (const int x : {60, 61, 100, 101, 140, 141}) {
    const QColor color = picture.pixelColor(x, 80);
    // Halfway between the stripes, half of it covered with blue.
    EXPECT_NEAR(color.red(), 64, 12) << x;
    EXPECT_NEAR(color.blue(), 191, 12) << x;
  }
  EXPECT_EQ(picture.pixelColor(40, 80).red() + picture.pixelColor(41, 80).red(), 255)
      << "beside it";
}

}  // namespace
}  // namespace tarnix::contract
