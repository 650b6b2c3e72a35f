#include <gtest/gtest.h>

#include "platforms/qt6/base/qt_web_view_class.h"
#include "platforms/qt6/shared/web_engine_part.h"
#include "tests/fakes/fake_web_view.h"

namespace tarnix::contract {
namespace {

using platform::WebView;
using platform::WebViewConfiguration;
using platform::WebViewInitialiser;

constexpr const char* initialiserName = "initWithFrame:configuration:";

class FakeWebViewWorld {
 public:
  platform::WebViewClass& webViewClass() { return class_; }
  /// Whether the platform's own initialiser ran, and returned the view.
  bool makesAWebView() {
    fakes::FakeWebView view;
    fakes::FakeWebViewConfiguration configuration;
    return class_.make(view, {{}, {1, 1}}, configuration) == &view && view.frame.size.width == 1;
  }

 private:
  fakes::FakeWebViewClass class_;
};

class Qt6WebViewWorld {
 public:
  Qt6WebViewWorld() : own_(webViewClass().instanceMethod(initialiserName)->implementation()) {}
  ~Qt6WebViewWorld() { webViewClass().instanceMethod(initialiserName)->setImplementation(own_); }

  platform::WebViewClass& webViewClass() { return qt6::QtWebViewClass::shared(); }
  bool makesAWebView() {
    Page page;
    fakes::FakeWebViewConfiguration configuration;
    return qt6::QtWebViewClass::shared().initialiser()(page, {}, configuration) == &page &&
           page.timesInitialised == 1;
  }

 private:
  class Page : public qt6::EnginePage {
   public:
    void initialise() override { ++timesInitialised; }
    int timesInitialised = 0;
  };

  WebViewInitialiser::Implementation own_;
};

template <class World>
class WebViewClassTest : public testing::Test {
 protected:
  World world;
};

using Worlds = testing::Types<FakeWebViewWorld, Qt6WebViewWorld>;
TYPED_TEST_SUITE(WebViewClassTest, Worlds);

TYPED_TEST(WebViewClassTest, HasAnInitialiserThatMakesWebViews) {
  ASSERT_NE(this->world.webViewClass().instanceMethod(initialiserName), nullptr);
  EXPECT_TRUE(this->world.makesAWebView());
}

TYPED_TEST(WebViewClassTest, FindsNoMethodThatIsNotThere) {
  for (const char* name : {"", "init", "initWithFrame:", "initWithFrame:configuration"}) {
    EXPECT_EQ(this->world.webViewClass().instanceMethod(name), nullptr) << name;
  }
}

TYPED_TEST(WebViewClassTest, TakesAMethodOnceUnderAName) {
  static WebViewInitialiser first(
      [](WebView& view, platform::Rect, WebViewConfiguration&) { return &view; });
  static WebViewInitialiser second(first.implementation());
  platform::WebViewClass& webViewClass = this->world.webViewClass();
  webViewClass.addInstanceMethod("sample", first);
  webViewClass.addInstanceMethod("sample", second);
  EXPECT_EQ(webViewClass.instanceMethod("sample"), &first);
  webViewClass.addInstanceMethod(initialiserName, second);
  EXPECT_NE(webViewClass.instanceMethod(initialiserName), &second);
}

TYPED_TEST(WebViewClassTest, CallsWhatWasPutInThePlaceOfItsInitialiser) {
  WebViewInitialiser& initialiser = *this->world.webViewClass().instanceMethod(initialiserName);
  int calls = 0;
  initialiser.setImplementation(
      [&calls, own = initialiser.implementation()](WebView& view, platform::Rect frame,
                                                   WebViewConfiguration& configuration) {
        ++calls;
        return own(view, frame, configuration);
      });
  EXPECT_TRUE(this->world.makesAWebView());
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace tarnix::contract
