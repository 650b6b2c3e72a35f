#include <gtest/gtest.h>

#include <algorithm>

#include "companion/client/companion_client.h"
#include "tests/integration/end_to_end/applications.h"
#include "tests/integration/end_to_end/screen_reading.h"
#include "tests/integration/harness/host_process.h"
#include "tests/integration/harness/wait_until.h"

namespace tarnix::integration {
namespace {

/// The screen once it has an element of that label: an application may still be building it.
std::vector<ScreenElement> screenWith(HostProcess& host, const std::string& label) {
  const std::uint16_t port = host.port();
  std::vector<ScreenElement> elements;
  waitUntil([&] {
    const auto screen = readScreen(port);
    if (!screen) {
      return true;
    }
    elements = parseScreen(screen->html);
    EXPECT_EQ(static_cast<std::size_t>(screen->elementCount), elements.size());
    return elementWithLabel(elements, label).has_value();
  });
  return elements;
}

void expectElement(const std::vector<ScreenElement>& elements, const std::string& tag,
                   const std::string& label, int centerX, int centerY) {
  const auto element = elementWithLabel(elements, label);
  ASSERT_TRUE(element) << label;
  EXPECT_EQ(element->tag, tag) << label;
  EXPECT_EQ(element->centerX, centerX) << label;
  EXPECT_EQ(element->centerY, centerY) << label;
}

TEST(Screen, HasItemsOfAQmlFileWhereTheyAre) {
  HostProcess host(qmlFile("geometry.qml").commandLine);
  const auto elements = screenWith(host, "Plain text");
  expectElement(elements, "button", "Press &lt;me&gt; &amp; &quot;go&quot;", 70, 50);
  expectElement(elements, "input", "Your name", 120, 120);
  expectElement(elements, "p", "Plain text", 300, 40);
  // 200 + 10 + 5 + 80 / 2 and 150 + 10 + 6 + 30 / 2
  const auto nested = elementWithLabel(elements, "Nested");
  ASSERT_TRUE(nested);
  EXPECT_EQ(nested->centerX, 255);
  EXPECT_EQ(nested->centerY, 181);
  EXPECT_FALSE(elementWithLabel(elements, "Hidden"));
  for (std::size_t index = 0; index < elements.size(); ++index) {
    EXPECT_EQ(elements[index].id, static_cast<int>(index) + 1);
  }
}

TEST(Screen, HasTheToolBarOfABoardGame) {
  HostProcess host(pentobi().commandLine);
  const auto elements = screenWith(host, "Settings");
  for (const char* label : {"New", "Rated Game", "Undo Move", "Settings", "Play", "Stop"}) {
    const auto element = elementWithLabel(elements, label);
    ASSERT_TRUE(element) << label;
    EXPECT_EQ(element->tag, "button") << label;
  }
}

TEST(Screen, HasTheControlsOfATextEditor) {
  // They are hidden behind the page otherwise, until the mouse comes near.
  HostOptions options;
  options.homeFiles = {{"config/GottCode/FocusWriter.conf",
                        "[View]\nAlwaysShowHeader=true\nAlwaysShowFooter=true\n"}};
  HostProcess host(focuswriter().commandLine, options);
  const auto elements = screenWith(host, "Close Tab");
  for (const char* label : {"File", "Edit", "Format", "Tools", "Settings", "Help", "New", "Open",
                            "Paste", "(Untitled 1)", "Close Tab"}) {
    const auto element = elementWithLabel(elements, label);
    ASSERT_TRUE(element) << label;
    EXPECT_EQ(element->tag, "button") << label;
  }
  EXPECT_TRUE(elementWithLabel(elements, "Words: 0"));
}

TEST(Screen, HasTenThousandItems) {
  constexpr std::int64_t count = 10'000;
  HostProcess host(qmlFile("many_items.qml", {std::to_string(count)}).commandLine);
  const std::uint16_t port = host.port();
  ASSERT_NE(port, 0);
  std::optional<ScreenHTMLResponse> screen;
  waitUntil([&] {
    screen = readScreen(port);
    return !screen || screen->elementCount >= count;
  });
  ASSERT_TRUE(screen);
  EXPECT_EQ(screen->elementCount, count);
  const auto elements = parseScreen(screen->html);
  ASSERT_EQ(elements.size(), static_cast<std::size_t>(count));
  EXPECT_TRUE(elementWithLabel(elements, "Item 0"));
  expectElement(elements, "p", "Item 9999", 995, 995);
}

}  // namespace
}  // namespace tarnix::integration
