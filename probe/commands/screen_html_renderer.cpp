#include "probe/commands/screen_html_renderer.h"

#include <array>
#include <cstddef>

#include "probe/inspect/truncation.h"
#include "probe/platform/text.h"

namespace tarnix::ScreenHTMLRenderer {
namespace {

using ProbeAccessibilityScanner::Element;

// In characters as people count them.
constexpr std::size_t longestLabel = 60;
constexpr std::size_t shortenedLabel = 57;
constexpr std::size_t longestValue = 30;

// Tags, attributes and coordinates of a line, beside its texts.
constexpr std::size_t typicalMarkup = 64;

/// A line is `<` opening ` id=N c="X,Y"` value beforeLabel LABEL afterLabel.
struct LineForm {
  std::string_view kind;
  std::string_view opening;
  bool showsValue;
  std::string_view beforeLabel;
  std::string_view afterLabel;
};

constexpr std::array<LineForm, 8> forms = {{
    {"Button", "<button", true, ">", "</button>"},
    {"Link", "<a", false, ">", "</a>"},
    {"Image", "<img", false, " alt=\"", "\">"},
    {"Header", "<h2", false, ">", "</h2>"},
    {"SearchField", "<input", true, " placeholder=\"", "\">"},
    {"Slider", "<input type=range", true, " label=\"", "\">"},
    {"TabBar", "<nav", false, ">", "</nav>"},
    {"StaticText", "<p", false, ">", "</p>"},
}};
constexpr const LineForm& buttonForm = forms[0];
constexpr const LineForm& textFieldForm = forms[4];
constexpr LineForm otherForm = {"", "<span", false, ">", "</span>"};

const LineForm& formOf(const Element& element) {
  for (const LineForm& form : forms) {
    if (form.kind == element.type) {
      return form;
    }
  }
  // A text field before a button: what can be typed into is more telling than that it reacts.
  if (element.isTextField) {
    return textFieldForm;
  }
  return element.isButton ? buttonForm : otherForm;
}

void appendEscaped(std::string& html, std::string_view text) {
  while (true) {
    const std::size_t special = text.find_first_of("&<>\"");
    html.append(text.substr(0, special));
    if (special == std::string_view::npos) {
      return;
    }
    switch (text[special]) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      default:
        html += "&quot;";
        break;
    }
    text.remove_prefix(special + 1);
  }
}

// Cut before escaping, so that no entity is ever cut.
void appendLabel(std::string& html, std::string_view label) {
  // No character is shorter than a byte.
  if (label.size() > longestLabel && platform::hasMoreCharacters(label, longestLabel)) {
    appendEscaped(html, platform::firstCharacters(label, shortenedLabel));
    html += "...";
  } else {
    appendEscaped(html, label);
  }
}

void appendValue(std::string& html, std::string_view value) {
  html += " v=\"";
  appendEscaped(
      html, value.size() > longestValue ? platform::firstCharacters(value, longestValue) : value);
  html += '"';
}

void appendLine(std::string& html, std::size_t id, const Element& element) {
  const LineForm& form = formOf(element);
  html += form.opening;
  html += " id=";
  html += std::to_string(id);
  html += " c=\"";
  html += std::to_string(truncatedTowardZero(element.frame.midX()));
  html += ',';
  html += std::to_string(truncatedTowardZero(element.frame.midY()));
  html += '"';
  if (form.showsValue && element.value) {
    appendValue(html, *element.value);
  }
  html += form.beforeLabel;
  appendLabel(html, element.label);
  html += form.afterLabel;
  html += '\n';
}

}  // namespace

std::string render(std::string_view screenName, const std::vector<Element>& elements) {
  std::string html;
  html.reserve(typicalMarkup + screenName.size() + elements.size() * typicalMarkup);
  html += "<html><title>";
  appendEscaped(html, screenName);
  html += "</title>\n";
  std::size_t id = 0;
  for (const Element& element : elements) {
    appendLine(html, ++id, element);
  }
  html += "</html>";
  return html;
}

}  // namespace tarnix::ScreenHTMLRenderer
