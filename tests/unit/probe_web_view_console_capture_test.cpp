#include "probe/capture/probe_web_view_console_capture.h"

#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "probe/capture/console_user_script.h"
#include "probe/capture/probe_console_handler.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using fakes::FakeWebView;
using fakes::FakeWebViewConfiguration;
using platform::PropertyValue;
using ProbeWebViewConsoleCapture::ConsoleEntry;
using Members = std::vector<PropertyValue::Member>;
using Seconds = std::chrono::duration<double>;

constexpr const char* installedLine = "[TarnixProbe] WebViewConsoleCapture installed\n";

class WebViewConsoleCapture : public ServerTest {
 protected:
  FakeWebView& makeWebView() {
    views_.push_back(std::make_unique<FakeWebView>());
    EXPECT_EQ(world_.webViewClass.make(*views_.back(), {{1, 2}, {30, 40}}, configuration_),
              views_.back().get());
    return *views_.back();
  }

  void post(Members members) {
    EXPECT_TRUE(configuration_.controller.post(
        "tarnixConsole", PropertyValue{PropertyValue::Dictionary{std::move(members)}}));
  }

  static std::vector<ConsoleEntry> entries() { return ProbeWebViewConsoleCapture::entries(); }

  FakeWebViewConfiguration configuration_;
  std::vector<std::unique_ptr<FakeWebView>> views_;
};

TEST_F(WebViewConsoleCapture, SaysOnceThatItIsInstalled) {
  ProbeWebViewConsoleCapture::install();
  EXPECT_EQ(standardError(), installedLine);
  forgetLines();
  ProbeWebViewConsoleCapture::install();
  EXPECT_EQ(standardError(), "");
  makeWebView();
  EXPECT_EQ(configuration_.controller.scripts.size(), 1U) << "exchanged once";
}

TEST_F(WebViewConsoleCapture, SaysSoWhenThereAreNoWebViews) {
  platform::Platform platform = platform::current();
  platform.webViewClass = nullptr;
  platform::setCurrent(platform);
  ProbeWebViewConsoleCapture::install();
  EXPECT_EQ(standardError(),
            "[TarnixProbe] WebViewConsoleCapture: failed to find "
            "WKWebView.init(frame:configuration:)\n" +
                std::string(installedLine));
}

TEST_F(WebViewConsoleCapture, SaysSoWhenTheInitialiserIsMissing) {
  world_.webViewClass.removeInstanceMethod("initWithFrame:configuration:");
  ProbeWebViewConsoleCapture::install();
  EXPECT_EQ(standardError(),
            "[TarnixProbe] WebViewConsoleCapture: failed to find "
            "WKWebView.init(frame:configuration:)\n" +
                std::string(installedLine));
}

TEST_F(WebViewConsoleCapture, SaysSoWhenItsOwnMethodHasNoPlace) {
  platform::WebViewInitialiser other([](platform::WebView& view, platform::Rect,
                                        platform::WebViewConfiguration&) { return &view; });
  world_.webViewClass.addInstanceMethod("probe_initWithFrame:configuration:", other);
  ProbeWebViewConsoleCapture::install();
  EXPECT_EQ(standardError(),
            "[TarnixProbe] WebViewConsoleCapture: failed to find swizzled method\n" +
                std::string(installedLine));
  EXPECT_EQ(makeWebView().scriptsAtInitialisation, 0U);
}

TEST_F(WebViewConsoleCapture, ComesBeforeTheServerWithoutAWord) {
  ProbeWebViewConsoleCapture::exchangeInitialisers();
  EXPECT_EQ(standardError(), "");
  EXPECT_EQ(makeWebView().scriptsAtInitialisation, 1U);
  ProbeWebViewConsoleCapture::install();
  EXPECT_EQ(standardError(), installedLine);
  FakeWebViewConfiguration other;
  FakeWebView view;
  world_.webViewClass.make(view, {}, other);
  EXPECT_EQ(other.controller.scripts.size(), 1U) << "not exchanged back";
}

TEST_F(WebViewConsoleCapture, AddsScriptAndHandlerBeforeTheHostsInitialiserRuns) {
  ProbeWebViewConsoleCapture::install();
  const FakeWebView& view = makeWebView();
  EXPECT_EQ(view.frame, (platform::Rect{{1, 2}, {30, 40}}));
  EXPECT_EQ(view.scriptsAtInitialisation, 1U);
  ASSERT_EQ(configuration_.controller.scripts.size(), 1U);
  const platform::UserScript& script = configuration_.controller.scripts[0];
  EXPECT_EQ(script.source, consoleUserScript);
  EXPECT_EQ(script.injectionTime, platform::UserScriptInjectionTime::AtDocumentStart);
  EXPECT_FALSE(script.forMainFrameOnly);
  ASSERT_EQ(configuration_.controller.handlers.size(), 1U);
  EXPECT_EQ(configuration_.controller.handlers[0].first, "tarnixConsole");
  EXPECT_EQ(configuration_.controller.handlers[0].second, &ProbeConsoleHandler::shared());
}

TEST_F(WebViewConsoleCapture, AddsThemAgainToAConfigurationThatIsUsedAgain) {
  ProbeWebViewConsoleCapture::install();
  makeWebView();
  makeWebView();
  EXPECT_EQ(configuration_.controller.scripts.size(), 2U);
  EXPECT_EQ(configuration_.controller.handlers.size(), 2U);
}

TEST_F(WebViewConsoleCapture, KeepsWhatIsPosted) {
  ProbeWebViewConsoleCapture::install();
  makeWebView();
  post({{"level", {"warn"}},
        {"message", {"gr\xC3\xBC\xC3\x9F \xF0\x9F\x90\xBB"}},
        {"url", {"http://127.0.0.1/"}},
        {"timestamp", {1700000000.25}}});
  EXPECT_EQ(entries(), (std::vector<ConsoleEntry>{{Seconds(1700000000.25), "warn",
                                                   "gr\xC3\xBC\xC3\x9F \xF0\x9F\x90\xBB",
                                                   "http://127.0.0.1/"}}));
}

TEST_F(WebViewConsoleCapture, TakesAnyLevelAndAnEmptyMessage) {
  ProbeWebViewConsoleCapture::install();
  makeWebView();
  post({{"level", {"shout"}}, {"message", {""}}, {"timestamp", {std::int64_t{5}}}});
  EXPECT_EQ(entries(), (std::vector<ConsoleEntry>{{Seconds(5), "shout", "", std::nullopt}}));
}

TEST_F(WebViewConsoleCapture, LeavesOutAnAddressThatIsNoText) {
  ProbeWebViewConsoleCapture::install();
  makeWebView();
  post({{"level", {"log"}}, {"message", {"a"}}, {"url", {7.0}}, {"timestamp", {1.0}}});
  post({{"level", {"log"}}, {"message", {"b"}}, {"url", {true}}, {"timestamp", {1.0}}});
  ASSERT_EQ(entries().size(), 2U);
  EXPECT_EQ(entries()[0].url, std::nullopt);
  EXPECT_EQ(entries()[1].url, std::nullopt);
}

TEST_F(WebViewConsoleCapture, TakesTheTimeOfReceiptForATimeThatIsNone) {
  ProbeWebViewConsoleCapture::install();
  makeWebView();
  world_.clock.time = std::chrono::system_clock::time_point(std::chrono::milliseconds(1234567));
  post({{"level", {"log"}}, {"message", {"a"}}, {"timestamp", {"1700000000"}}});
  post({{"level", {"log"}}, {"message", {"b"}}});
  post({{"level", {"log"}}, {"message", {"c"}}, {"timestamp", {true}}});
  post({{"level", {"log"}},
        {"message", {"d"}},
        {"timestamp", {std::numeric_limits<double>::quiet_NaN()}}});
  post({{"level", {"log"}},
        {"message", {"e"}},
        {"timestamp", {std::numeric_limits<double>::infinity()}}});
  ASSERT_EQ(entries().size(), 5U);
  for (const ConsoleEntry& entry : entries()) {
    EXPECT_EQ(entry.timestamp, Seconds(1234.567)) << entry.message;
  }
}

TEST_F(WebViewConsoleCapture, PassesOverWhatIsNoConsoleCall) {
  ProbeWebViewConsoleCapture::install();
  makeWebView();
  configuration_.controller.post("tarnixConsole", PropertyValue{"text"});
  configuration_.controller.post("tarnixConsole", PropertyValue{1.0});
  configuration_.controller.post("tarnixConsole", PropertyValue{PropertyValue::Array{}});
  post({});
  post({{"message", {"no level"}}});
  post({{"level", {"log"}}});
  post({{"level", {1.0}}, {"message", {"level is a number"}}});
  post({{"level", {"log"}}, {"message", {5.0}}});
  post({{"level", {"log"}}, {"message", PropertyValue{PropertyValue::Other{"null"}}}});
  EXPECT_EQ(entries(), std::vector<ConsoleEntry>());
  EXPECT_EQ(standardError(), installedLine) << "without a message";
}

TEST_F(WebViewConsoleCapture, KeepsTheNewestTwoHundred) {
  for (int index = 0; index < 201; ++index) {
    ProbeWebViewConsoleCapture::addEntry({{}, "log", std::to_string(index), std::nullopt});
    EXPECT_EQ(entries().size(), std::min<std::size_t>(static_cast<std::size_t>(index) + 1, 200));
  }
  const std::vector<ConsoleEntry> kept = entries();
  for (std::size_t index = 0; index < kept.size(); ++index) {
    EXPECT_EQ(kept[index].message, std::to_string(index + 1));
  }
}

TEST_F(WebViewConsoleCapture, IsReadFromOtherThreadsWhileItFills) {
  std::thread reader([] {
    for (int round = 0; round < 200; ++round) {
      const std::vector<ConsoleEntry> seen = entries();
      EXPECT_LE(seen.size(), 200U);
      for (std::size_t index = 1; index < seen.size(); ++index) {
        EXPECT_LT(seen[index - 1].timestamp, seen[index].timestamp);
      }
    }
  });
  for (int index = 0; index < 2000; ++index) {
    ProbeWebViewConsoleCapture::addEntry({Seconds(index), "log", "line", std::nullopt});
  }
  reader.join();
}

}  // namespace
}  // namespace tarnix::tests
