#include "probe/commands/screen_html_renderer.h"

#include <gtest/gtest.h>

namespace tarnix::tests {
namespace {

using platform::Rect;
using ProbeAccessibilityScanner::Element;

Element element(std::string label, std::string_view type) {
  Element result;
  result.label = std::move(label);
  result.type = type;
  result.frame = {{0, 0}, {75, 41}};
  return result;
}

/// The one line of a screen with one element.
std::string lineOf(const Element& only) {
  const std::string html = ScreenHTMLRenderer::render("S", {only});
  const std::string head = "<html><title>S</title>\n";
  const std::string tail = "\n</html>";
  EXPECT_TRUE(html.starts_with(head));
  EXPECT_TRUE(html.ends_with(tail));
  return html.substr(head.size(), html.size() - head.size() - tail.size());
}

std::string labelOf(const std::string& label) {
  const std::string line = lineOf(element(label, "StaticText"));
  const std::string head = "<p id=1 c=\"37,20\">";
  EXPECT_TRUE(line.starts_with(head));
  return line.substr(head.size(), line.size() - head.size() - std::string("</p>").size());
}

std::string repeated(std::string_view part, int count) {
  std::string whole;
  for (int index = 0; index < count; ++index) {
    whole += part;
  }
  return whole;
}

TEST(ScreenHTMLRenderer, OfAnEmptyScreenIsATitle) {
  EXPECT_EQ(ScreenHTMLRenderer::render("Home", {}), "<html><title>Home</title>\n</html>");
}

TEST(ScreenHTMLRenderer, EscapesTheTitle) {
  EXPECT_EQ(ScreenHTMLRenderer::render("A & <B> \"c\" 'd'", {}),
            "<html><title>A &amp; &lt;B&gt; &quot;c&quot; 'd'</title>\n</html>");
}

struct FormCase {
  const char* type;
  bool isTextField;
  bool isButton;
  const char* line;
};

TEST(ScreenHTMLRenderer, WritesALineForEachKind) {
  const std::vector<FormCase> table = {
      {"Button", false, true, R"(<button id=1 c="37,20" v="V">L</button>)"},
      {"Button", true, false, R"(<button id=1 c="37,20" v="V">L</button>)"},
      {"Link", false, false, R"(<a id=1 c="37,20">L</a>)"},
      {"Image", false, false, R"(<img id=1 c="37,20" alt="L">)"},
      {"Header", false, false, R"(<h2 id=1 c="37,20">L</h2>)"},
      {"SearchField", true, false, R"(<input id=1 c="37,20" v="V" placeholder="L">)"},
      {"SearchField", false, false, R"(<input id=1 c="37,20" v="V" placeholder="L">)"},
      {"Slider", false, false, R"(<input type=range id=1 c="37,20" v="V" label="L">)"},
      {"TabBar", false, false, R"(<nav id=1 c="37,20">L</nav>)"},
      {"StaticText", false, false, R"(<p id=1 c="37,20">L</p>)"},
      {"StaticText", true, true, R"(<p id=1 c="37,20">L</p>)"},
      {"Other", true, false, R"(<input id=1 c="37,20" v="V" placeholder="L">)"},
      {"Other", true, true, R"(<input id=1 c="37,20" v="V" placeholder="L">)"},
      {"Other", false, true, R"(<button id=1 c="37,20" v="V">L</button>)"},
      {"Other", false, false, R"(<span id=1 c="37,20">L</span>)"},
      {"button", false, false, R"(<span id=1 c="37,20">L</span>)"},
      {"button", false, true, R"(<button id=1 c="37,20" v="V">L</button>)"},
      {"", false, false, R"(<span id=1 c="37,20">L</span>)"},
  };
  for (const FormCase& row : table) {
    Element only = element("L", row.type);
    only.value = "V";
    only.isTextField = row.isTextField;
    only.isButton = row.isButton;
    EXPECT_EQ(lineOf(only), row.line);
  }
}

TEST(ScreenHTMLRenderer, LeavesTheValueOutWhereThereIsNone) {
  EXPECT_EQ(lineOf(element("L", "Button")), R"(<button id=1 c="37,20">L</button>)");
  EXPECT_EQ(lineOf(element("L", "SearchField")), R"(<input id=1 c="37,20" placeholder="L">)");
  EXPECT_EQ(lineOf(element("L", "Slider")), R"(<input type=range id=1 c="37,20" label="L">)");
}

TEST(ScreenHTMLRenderer, KeepsAnEmptyValue) {
  Element field = element("L", "SearchField");
  field.value = "";
  EXPECT_EQ(lineOf(field), R"(<input id=1 c="37,20" v="" placeholder="L">)");
}

TEST(ScreenHTMLRenderer, TruncatesTheCentreTowardZero) {
  struct Case {
    Rect frame;
    const char* centre;
  };
  const std::vector<Case> table = {
      {{{0, 0}, {75, 41}}, "37,20"},
      {{{16.7, 402.2}, {10, 10}}, "21,407"},
      {{{-10.5, -0.5}, {1, 1}}, "-10,0"},
      {{{-100, -41}, {75, 41}}, "-62,-20"},
      {{{1e300, -1e300}, {1, 1}}, "9223372036854775807,-9223372036854775808"},
  };
  for (const Case& row : table) {
    Element only = element("L", "StaticText");
    only.frame = row.frame;
    EXPECT_EQ(lineOf(only), std::string("<p id=1 c=\"") + row.centre + "\">L</p>");
  }
}

TEST(ScreenHTMLRenderer, CutsLabelsOfMoreThanSixtyCharacters) {
  EXPECT_EQ(labelOf(std::string(60, 'x')), std::string(60, 'x'));
  EXPECT_EQ(labelOf(std::string(61, 'x')), std::string(57, 'x') + "...");
  EXPECT_EQ(labelOf(repeated("e\xcc\x81", 60)), repeated("e\xcc\x81", 60));
  EXPECT_EQ(labelOf(repeated("e\xcc\x81", 61)), repeated("e\xcc\x81", 57) + "...");
}

TEST(ScreenHTMLRenderer, CutsBeforeItEscapes) {
  EXPECT_EQ(labelOf(std::string(60, '&')), repeated("&amp;", 60));
  EXPECT_EQ(labelOf(std::string(61, '&')), repeated("&amp;", 57) + "...");
}

TEST(ScreenHTMLRenderer, EscapesLabels) {
  EXPECT_EQ(labelOf("A&B<\"C\">"), "A&amp;B&lt;&quot;C&quot;&gt;");
  EXPECT_EQ(labelOf("&amp;"), "&amp;amp;");
  EXPECT_EQ(labelOf("it's"), "it's");
  EXPECT_EQ(labelOf("gr\xc3\xbc\xc3\x9f"), "gr\xc3\xbc\xc3\x9f");
}

TEST(ScreenHTMLRenderer, CutsValuesToThirtyCharactersWithoutEllipsis) {
  Element field = element("L", "SearchField");
  field.value = std::string(45, 'v');
  EXPECT_EQ(lineOf(field),
            "<input id=1 c=\"37,20\" v=\"" + std::string(30, 'v') + "\" placeholder=\"L\">");
  field.value = repeated("\xf0\x9f\x8e\x89", 31);
  EXPECT_EQ(lineOf(field), "<input id=1 c=\"37,20\" v=\"" + repeated("\xf0\x9f\x8e\x89", 30) +
                               "\" placeholder=\"L\">");
  field.value = "\"<" + std::string(40, '&');
  EXPECT_EQ(lineOf(field), "<input id=1 c=\"37,20\" v=\"&quot;&lt;" + repeated("&amp;", 28) +
                               "\" placeholder=\"L\">");
}

TEST(ScreenHTMLRenderer, NumbersElementsFromOne) {
  Element field = element("Name", "Other");
  field.isTextField = true;
  field.value = "Ada";
  EXPECT_EQ(ScreenHTMLRenderer::render(
                "Sign up", {element("Welcome", "StaticText"), field, element("Next", "Button")}),
            "<html><title>Sign up</title>\n"
            "<p id=1 c=\"37,20\">Welcome</p>\n"
            "<input id=2 c=\"37,20\" v=\"Ada\" placeholder=\"Name\">\n"
            "<button id=3 c=\"37,20\">Next</button>\n"
            "</html>");
}

}  // namespace
}  // namespace tarnix::tests
