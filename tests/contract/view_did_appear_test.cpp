#include <gtest/gtest.h>

#include <QDialog>
#include <QMessageBox>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWidget>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "probe/platform/view_controller.h"
#include "tests/contract/appearances.h"
#include "tests/contract/fake_host_world.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/fakes/fake_view_controller.h"

// Named as people name them; in no namespace, as in most applications.
class HomeScreen : public QWidget {};
class SettingsViewController : public QWidget {};
namespace shop {
class CartVC : public QDialog {};
}  // namespace shop

namespace tarnix::contract {
namespace {

class FakeScreenWorld : public FakeHostWorld {
 public:
  platform::ViewDidAppear& viewDidAppear() { return viewDidAppear_; }
  void showHome() { appear("HomeScreen"); }
  void showSettings() { appear("SettingsViewController"); }
  void leaveSettings() { appear("HomeScreen"); }

 private:
  void appear(const char* name) {
    fakes::FakeViewController controller(name);
    viewDidAppear_(controller, false);
  }

  platform::ViewDidAppear viewDidAppear_{[](platform::ViewController&, bool) {}};
};

class Qt6ScreenWorld : public Qt6HostWorld {
 public:
  platform::ViewDidAppear& viewDidAppear() { return *qt6Services().viewDidAppear; }
  void showHome() { show(home_); }
  void showSettings() { show(settings_); }
  void leaveSettings() { settings_.close(); }

 private:
  static void show(QWidget& window) {
    window.resize(300, 200);
    window.show();
    window.activateWindow();
    contract::pumpUntil([&] { return window.windowHandle()->isExposed(); });
  }

  HomeScreen home_;
  SettingsViewController settings_;
};

bool isToolkitPath(const std::string& path) {
  return path.find("/usr/lib/") != std::string::npos || path.find("/System/") != std::string::npos;
}

template <class World>
class ViewDidAppearTest : public testing::Test {
 protected:
  bool comes(const std::string& className) {
    return world.pumpUntil([&] { return appearances.last() == className; });
  }

  World world;
  Appearances appearances{world.viewDidAppear()};
};

using Worlds = testing::Types<FakeScreenWorld, Qt6ScreenWorld>;
TYPED_TEST_SUITE(ViewDidAppearTest, Worlds);

TYPED_TEST(ViewDidAppearTest, IsCalledForAScreenOfTheApplications) {
  this->world.showHome();
  ASSERT_TRUE(this->comes("HomeScreen")) << this->appearances.last();
  EXPECT_FALSE(isToolkitPath(this->appearances.all().back().bundlePath))
      << this->appearances.all().back().bundlePath;
  EXPECT_EQ(this->appearances.threads().back(), std::this_thread::get_id());
}

TYPED_TEST(ViewDidAppearTest, IsCalledForEachScreenAndForReturningToOne) {
  this->world.showHome();
  ASSERT_TRUE(this->comes("HomeScreen"));
  this->world.showSettings();
  ASSERT_TRUE(this->comes("SettingsViewController"));
  this->world.leaveSettings();
  EXPECT_TRUE(this->comes("HomeScreen"));
}

TYPED_TEST(ViewDidAppearTest, CallsTheImplementationThatWasPutInLast) {
  int calls = 0;
  {
    auto& method = this->world.viewDidAppear();
    const auto original = method.implementation();
    method.setImplementation([&](platform::ViewController& controller, bool animated) {
      original(controller, animated);
      ++calls;
    });
    this->world.showHome();
    ASSERT_TRUE(this->comes("HomeScreen"));
    method.setImplementation(original);
  }
  EXPECT_GE(calls, 1);
}

class Qt6Screens : public testing::Test {
 protected:
  bool comes(const std::string& className, const std::string& title = {}) {
    const bool hasCome = pumpUntil([&] {
      return appearances.last() == className && (title.empty() || appearances.lastTitle() == title);
    });
    if (!hasCome) {
      ADD_FAILURE() << "last was " << appearances.last() << " \"" << appearances.lastTitle() << '"';
    }
    return hasCome;
  }

  /// `text` becomes a window.
  std::unique_ptr<QQuickWindow> quickWindow(const QByteArray& text) {
    QQmlComponent component(&engine_);
    component.setData("import QtQuick\nimport QtQuick.Controls\nimport QtQuick.Layouts\n" + text,
                      QUrl("file:///app/Main.qml"));
    auto* const window = qobject_cast<QQuickWindow*>(component.create());
    if (window == nullptr) {
      ADD_FAILURE() << component.errorString().toStdString();
      return nullptr;
    }
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    window->show();
    return std::unique_ptr<QQuickWindow>(window);
  }

  static void set(QQuickWindow& window, const char* name, const QVariant& value) {
    window.setProperty(name, value);
  }

  QQmlEngine engine_;
  Appearances appearances{*qt6Services().viewDidAppear};
};

TEST_F(Qt6Screens, AreTheCurrentPagesOfTabs) {
  HomeScreen window;
  auto* const layout = new QVBoxLayout(&window);
  auto* const tabs = new QTabWidget;
  tabs->addTab(new SettingsViewController, "Settings");
  tabs->addTab(new shop::CartVC, "Cart");
  tabs->addTab(new QWidget, "Nothing");
  layout->addWidget(tabs);
  window.resize(400, 300);
  window.show();
  ASSERT_TRUE(comes("SettingsViewController"));
  tabs->setCurrentIndex(1);
  ASSERT_TRUE(comes("CartVC"));
  tabs->setCurrentIndex(0);
  ASSERT_TRUE(comes("SettingsViewController"));
  appearances.forget();
  tabs->setCurrentIndex(2);
  ASSERT_TRUE(comes("QWidget"));
  ASSERT_EQ(appearances.all().size(), 2U);
  EXPECT_EQ(appearances.all().front().className, "HomeScreen")
      << "a page that has no class of its own leaves the window";
  EXPECT_TRUE(isToolkitPath(appearances.all().back().bundlePath));
}

TEST_F(Qt6Screens, SayOfAMessageBoxThatItIsTheToolkits) {
  HomeScreen window;
  window.resize(400, 300);
  window.show();
  ASSERT_TRUE(comes("HomeScreen"));
  {
    QMessageBox box(&window);
    box.setText("Really?");
    box.open();
    ASSERT_TRUE(comes("QMessageBox"));
    EXPECT_TRUE(isToolkitPath(appearances.all().back().bundlePath));
  }
  EXPECT_TRUE(comes("HomeScreen"));
}

TEST_F(Qt6Screens, FollowAWidgetThatTakesThePlaceOfAnother) {
  QWidget window;
  window.resize(400, 300);
  auto* const home = new HomeScreen;
  home->setParent(&window);
  home->resize(400, 300);
  auto* const settings = new SettingsViewController;
  settings->setParent(&window);
  settings->resize(400, 300);
  settings->hide();
  window.show();
  ASSERT_TRUE(comes("QWidget"));
  home->hide();
  settings->show();
  ASSERT_TRUE(comes("SettingsViewController"));
  settings->hide();
  home->show();
  ASSERT_TRUE(comes("HomeScreen"));
}

TEST_F(Qt6Screens, FollowAWidgetThatIsRaised) {
  QWidget window;
  window.resize(400, 300);
  auto* const home = new HomeScreen;
  home->setParent(&window);
  home->resize(400, 300);
  auto* const settings = new SettingsViewController;
  settings->setParent(&window);
  settings->resize(400, 300);
  window.show();
  ASSERT_TRUE(comes("QWidget"));
  home->raise();
  ASSERT_TRUE(comes("HomeScreen"));
  settings->raise();
  ASSERT_TRUE(comes("SettingsViewController"));
}

TEST_F(Qt6Screens, LoseAWindowThatIsDeletedAtOnce) {
  HomeScreen home;
  home.resize(400, 300);
  home.show();
  ASSERT_TRUE(comes("HomeScreen"));
  for (int turn = 0; turn < 20; ++turn) {
    auto settings = std::make_unique<SettingsViewController>();
    settings->show();
    if (turn % 2 == 0) {
      letPass(std::chrono::milliseconds(1));
    }
  }
  appearances.forget();
  home.hide();
  letPass(std::chrono::milliseconds(20));
  home.show();
  EXPECT_TRUE(comes("HomeScreen"));
}

TEST_F(Qt6Screens, ArePagesOfAStackView) {
  const auto window = quickWindow(R"(ApplicationWindow {
    width: 400; height: 300; title: "Shop"
    component Basket: Page { property int count: 0; title: "Basket" }
    component Terms: Page { property int count: 0 }
    property string action
    Component { id: basket; Basket {} }
    Component { id: terms; Terms {} }
    StackView { id: stack; anchors.fill: parent; initialItem: Page { title: "Catalogue" } }
    onActionChanged: switch (action) {
      case "basket": stack.push(basket); break
      case "terms": stack.push(terms); break
      case "pop": stack.pop(); break
    }
  })");
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(comes("UIHostingController<Page>", "Catalogue"));
  set(*window, "action", "basket");
  ASSERT_TRUE(comes("UIHostingController<Basket>", "Basket"));
  set(*window, "action", "terms");
  ASSERT_TRUE(comes("UIHostingController<Terms>"));
  EXPECT_EQ(appearances.lastTitle(), "");
  set(*window, "action", "pop");
  EXPECT_TRUE(comes("UIHostingController<Basket>", "Basket"));
}

TEST_F(Qt6Screens, ArePagesOfASwipeViewAndOfTabs) {
  const auto window = quickWindow(R"(ApplicationWindow {
    width: 400; height: 300; title: "Rows"
    property int page: 0
    property int tab: 0
    SwipeView { anchors.fill: parent; currentIndex: page
      Page { title: "First"
        StackLayout { anchors.fill: parent; currentIndex: tab
          Page { title: "Left" }
          Loader { sourceComponent: Page { title: "Right" } }
        }
      }
      Page { title: "Second" }
    }
  })");
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(comes("UIHostingController<Page>", "Left"));
  set(*window, "page", 1);
  ASSERT_TRUE(comes("UIHostingController<Page>", "Second"));
  set(*window, "page", 0);
  ASSERT_TRUE(comes("UIHostingController<Page>", "Left"));
  set(*window, "tab", 1);
  ASSERT_TRUE(comes("UIHostingController<Page>", "Right"));
}

TEST_F(Qt6Screens, AreDialogsAndDrawersButNoMenus) {
  const auto window = quickWindow(R"(ApplicationWindow {
    width: 400; height: 300; title: "Shop"
    property bool asks: false
    property bool offers: false
    property bool navigates: false
    onAsksChanged: asks ? question.open() : question.close()
    onOffersChanged: offers ? menu.open() : menu.close()
    onNavigatesChanged: navigates ? drawer.open() : drawer.close()
    Dialog { id: question; title: "Really?"; modal: true; Label { text: "Think" } }
    Menu { id: menu; MenuItem { text: "Copy" } }
    Drawer { id: drawer; height: 300; width: 200; Label { text: "Places" } }
  })");
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(comes("UIHostingController<Main>", "Shop"));
  set(*window, "asks", true);
  ASSERT_TRUE(comes("UIHostingController<Dialog>", "Really?"));
  set(*window, "asks", false);
  ASSERT_TRUE(comes("UIHostingController<Main>", "Shop"));
  const std::size_t before = appearances.all().size();
  set(*window, "offers", true);
  letPass(std::chrono::milliseconds(800));
  EXPECT_EQ(appearances.all().size(), before);
  set(*window, "offers", false);
  set(*window, "navigates", true);
  ASSERT_TRUE(comes("UIHostingController<Drawer>"));
}

TEST_F(Qt6Screens, FollowPagesThatAreExchangedByHand) {
  const auto window = quickWindow(R"(Window {
    width: 400; height: 300; title: "Player"
    property bool showsList: false
    component Songs: Item { property int count; Text { text: "Songs" } }
    component Lyrics: Item { property int count; Text { text: "Lyrics" } }
    Item { anchors.fill: parent
      Songs { anchors.fill: parent; visible: !showsList }
      Lyrics { anchors.fill: parent; visible: showsList }
    }
  })");
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(comes("UIHostingController<Songs>"));
  set(*window, "showsList", true);
  ASSERT_TRUE(comes("UIHostingController<Lyrics>"));
  set(*window, "showsList", false);
  ASSERT_TRUE(comes("UIHostingController<Songs>"));
}

TEST_F(Qt6Screens, FollowTheTitleOfTheScreenOnView) {
  const auto window = quickWindow("Window { width: 400; height: 300; title: \"One\" }");
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(comes("UIHostingController<Main>", "One"));
  window->setTitle("Two");
  ASSERT_TRUE(comes("UIHostingController<Main>", "Two"));
}

TEST_F(Qt6Screens, AreFoundThoughTheSceneNeverRests) {
  const auto window = quickWindow(R"(ApplicationWindow {
    width: 400; height: 300; title: "Clock"
    property bool second: false
    StackLayout { anchors.fill: parent; currentIndex: second ? 1 : 0
      Page { title: "Hours" }
      Page { title: "Minutes" }
    }
    Rectangle { width: 20; height: 20; color: "red"
      RotationAnimation on rotation { from: 0; to: 360; loops: Animation.Infinite }
    }
  })");
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(comes("UIHostingController<Page>", "Hours"));
  set(*window, "second", true);
  ASSERT_TRUE(comes("UIHostingController<Page>", "Minutes"));
}

TEST_F(Qt6Screens, AreFoundBehindTenThousandItems) {
  const auto window = quickWindow(R"(ApplicationWindow {
    width: 400; height: 300; title: "Many"
    Page { anchors.fill: parent; title: "Crowd"
      Repeater { model: 10000; Item { Item { width: 5; height: 5 } } }
    }
  })");
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(comes("UIHostingController<Page>", "Crowd"));
}

}  // namespace
}  // namespace tarnix::contract
