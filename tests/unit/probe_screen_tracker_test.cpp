#include "probe/capture/probe_screen_tracker.h"

#include <string>
#include <vector>

#include "probe/capture/screen_name.h"
#include "tests/fakes/fake_view_controller.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using fakes::FakeViewController;

class ScreenTracker : public ServerTest {
 protected:
  ScreenTracker() {
    ProbeScreenTracker::detail::installed = false;
    world_.viewDidAppear.setImplementation([this](platform::ViewController& controller, bool) {
      appeared_.push_back(controller.className() + " after " +
                          ProbeScreenTracker::lastScreenName());
    });
    ProbeScreenTracker::install();
  }

  void appear(FakeViewController controller) { world_.viewDidAppear(controller, true); }

  /// What the host's own implementation was called with, and which screen was on view then.
  std::vector<std::string> appeared_;
};

TEST_F(ScreenTracker, SaysThatItIsInstalled) {
  EXPECT_EQ(standardError(), "[TarnixProbe] ScreenTracker installed\n");
}

TEST_F(ScreenTracker, InstallsOnce) {
  forgetLines();
  ProbeScreenTracker::install();
  EXPECT_EQ(standardError(), "");
  appear(FakeViewController("HomeScreen"));
  EXPECT_EQ(appeared_.size(), 1U);
}

TEST_F(ScreenTracker, SaysWhenScreensCannotBeTold) {
  ProbeScreenTracker::detail::installed = false;
  forgetLines();
  platform::Platform platform = platform::current();
  platform.viewDidAppear = nullptr;
  platform::setCurrent(platform);
  ProbeScreenTracker::install();
  ProbeScreenTracker::install();
  EXPECT_EQ(standardError(), "[TarnixProbe] ScreenTracker: failed to find viewDidAppear\n");
}

TEST_F(ScreenTracker, LetsTheHostsOwnMethodRunFirst) {
  appear(FakeViewController("HomeScreen"));
  appear(FakeViewController("_UIHidden"));
  EXPECT_EQ(appeared_,
            (std::vector<std::string>{"HomeScreen after Unknown", "_UIHidden after Home"}));
}

TEST_F(ScreenTracker, NamesEachScreenThatAppears) {
  appear(FakeViewController("SettingsViewController"));
  EXPECT_EQ(ProbeScreenTracker::lastScreenName(), "Settings");
  EXPECT_EQ(ProbeState::shared().currentScreen(), "Settings");
  appear(FakeViewController("LoginVC"));
  EXPECT_EQ(ProbeState::shared().currentScreen(), "Login");
  appear(FakeViewController("SettingsViewController"));
  EXPECT_EQ(ProbeState::shared().currentScreen(), "Settings") << "a screen that was left counts";
}

TEST_F(ScreenTracker, NamesAScreenAgainAfterTheStoreWasCleared) {
  appear(FakeViewController("HomeScreen"));
  ProbeState::shared().clear();
  EXPECT_EQ(ProbeScreenTracker::lastScreenName(), "Home");
  EXPECT_EQ(ProbeState::shared().currentScreen(), "Unknown");
  appear(FakeViewController("HomeScreen"));
  EXPECT_EQ(ProbeState::shared().currentScreen(), "Home");
}

TEST_F(ScreenTracker, PassesOverContainersAndWhatIsNotTheApplications) {
  appear(FakeViewController("HomeScreen"));
  for (const char* name :
       {"UINavigationController", "UITabBarController", "UISplitViewController",
        "UIPageViewController", "UIAlertController", "UIInputWindowController",
        "UICompatibilityInputViewController", "UISystemInputAssistantViewController",
        "UIEditingOverlayViewController", "_UIContextMenuActionsOnlyViewController",
        "_UIAlertControllerTextFieldViewController", "_Private", "TarnixOrbController",
        "MyTarnixScreen", "ProbeOverlayController", "SpaceProbeScreen"}) {
    appear(FakeViewController(name));
    EXPECT_EQ(ProbeScreenTracker::lastScreenName(), "Home") << name;
  }
}

TEST_F(ScreenTracker, TracksClassesThatOnlyResembleThose) {
  for (const char* name : {"UINavigationControllerOfMine", "MyUIAlert", "tarnix", "probe"}) {
    appear(FakeViewController(name));
    EXPECT_NE(ProbeScreenTracker::lastScreenName(), "Unknown") << name;
    ProbeScreenTracker::setLastScreenName("Unknown");
  }
}

TEST_F(ScreenTracker, PassesOverFrameworksButNotTheScreensTheyHost) {
  for (const char* path : {"/System/Library/Frameworks/Photos", "/usr/lib/x86_64-linux-gnu"}) {
    FakeViewController picker("PhotoPicker");
    picker.path = path;
    appear(picker);
    EXPECT_EQ(ProbeScreenTracker::lastScreenName(), "Unknown") << path;
  }
  FakeViewController hosting("UIHostingController<Shop.CartView>");
  hosting.path = "/usr/lib/x86_64-linux-gnu";
  appear(hosting);
  EXPECT_EQ(ProbeScreenTracker::lastScreenName(), "CartView");
  FakeViewController derived("MyUIHostingController<Shop.BasketView>");
  derived.path = "/usr/lib/x86_64-linux-gnu";
  appear(derived);
  EXPECT_EQ(ProbeScreenTracker::lastScreenName(), "CartView") << "only the class itself is spared";
}

TEST_F(ScreenTracker, IsInstalledByASyncThatComesFirst) {
  ProbeScreenTracker::detail::installed = false;
  forgetLines();
  startServer();
  connectCompanion();
  EXPECT_NE(standardError().find("[TarnixProbe] ScreenTracker installed\n"), std::string::npos);
}

struct NameCase {
  const char* className;
  std::optional<std::string> title;
  const char* name;
};

TEST(ScreenName, IsReadAsATable) {
  fakes::FakeServices::shared().demangledNames = {
      {"_TtGC7SwiftUI19UIHostingControllerV5MyApp11ContentView_",
       "SwiftUI.UIHostingController<MyApp.ContentView>"},
      {"_TtNestedUIHostingController",
       "SwiftUI.UIHostingController<SwiftUI.ModifiedContent<A.B, C.D>>"},
      {"_TtPlainUIHostingController", "SwiftUI.UIHostingController"},
      {"_TtOddUIHostingController", "a> UIHostingController <b"}};
  const NameCase cases[] = {
      {"SettingsViewController", {}, "Settings"},
      {"ProfileController", {}, "Profile"},
      {"HomeScreen", {}, "Home"},
      {"LoginVC", {}, "Login"},
      {"ViewController", {}, "View"},
      {"Controller", {}, "Controller"},
      {"Screen", {}, "Screen"},
      {"VC", {}, "VC"},
      {"ScreenController", {}, "Screen"},
      {"HomeScreenVC", {}, "Home Screen"},
      {"UserProfileDetailViewController", {}, "User Profile Detail"},
      {"URLLoader", {}, "URLLoader"},
      {"MyURLList", {}, "My URLList"},
      {"iPadMenu2Screen", {}, "i Pad Menu2"},
      {"Page1B", {}, "Page1B"},
      {"größeÄndern", {}, "größe Ändern"},
      {"сетьОшибкаVC", {}, "сеть Ошибка"},
      {"cafe\u0301Menu", {}, "cafe\u0301 Menu"},
      {"", {}, ""},
      {"A", {}, "A"},
      // A title is for hosting controllers alone.
      {"SettingsViewController", "Preferences", "Settings"},
      {"UIHostingController<MyApp.ContentView>", {}, "ContentView"},
      {"UIHostingController<MyApp.ContentView>", "", "ContentView"},
      {"UIHostingController<MyApp.ContentView>", "Inbox", "Inbox"},
      {"UIHostingController<ContentView>", {}, "ContentView"},
      {"UIHostingController<ModifiedContent<A.B, C.D>>", {}, "D>"},
      {"UIHostingController<ModifiedContent<B, D>>", {}, "ModifiedContent<B, D>"},
      {"MyUIHostingController<Shop.Cart>", {}, "Cart"},
      {"UIHostingController", {}, "SwiftUI View"},
      {"UIHostingController>odd<", {}, "SwiftUI View"},
      {"UIHostingController<>", {}, ""},
      {"_TtGC7SwiftUI19UIHostingControllerV5MyApp11ContentView_", {}, "ContentView"},
      {"_TtNestedUIHostingController", {}, "D>"},
      {"_TtPlainUIHostingController", {}, "SwiftUI View"},
      {"_TtOddUIHostingController", {}, "SwiftUI View"},
      {"_TtUnknownUIHostingController", {}, "SwiftUI View"},
  };
  for (const NameCase& one : cases) {
    EXPECT_EQ(humanReadableName(FakeViewController(one.className, one.title)), one.name)
        << one.className;
  }
}

}  // namespace
}  // namespace tarnix::tests
