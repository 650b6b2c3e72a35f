#include "probe/inspect/probe_accessibility_auditor.h"

#include <string>
#include <string_view>
#include <utility>

#include "probe/inspect/probe_accessibility_scanner.h"
#include "probe/inspect/truncation.h"
#include "probe/platform/text.h"

namespace tarnix::ProbeAccessibilityAuditor {
namespace {

using ProbeAccessibilityScanner::Element;

// UTF-8 of the blanks that are no line breaks: tabulator, space, and the separators of Unicode's
// category Zs.
constexpr std::string_view blanks[] = {
    "\t",     " ",      "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004",
    "\u2005", "\u2006", "\u2007", "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000",
};

bool isBlank(std::string_view label) {
  while (!label.empty()) {
    std::size_t length = 0;
    for (const std::string_view blank : blanks) {
      if (label.starts_with(blank)) {
        length = blank.size();
      }
    }
    if (length == 0) {
      return false;
    }
    label.remove_prefix(length);
  }
  return true;
}

std::string integer(double number) { return std::to_string(truncatedTowardZero(number)); }

std::string place(std::string_view what, const platform::Rect& frame) {
  return std::string(what) + " at (" + integer(frame.midX()) + "," + integer(frame.midY()) + ")";
}

AuditIssue issueOf(const Element& element, std::string name, std::string issue,
                   std::string_view severity) {
  const platform::Rect& frame = element.frame;
  return {.element = std::move(name),
          .issue = std::move(issue),
          .severity = std::string(severity),
          .x = truncatedTowardZero(frame.minX()),
          .y = truncatedTowardZero(frame.minY()),
          .width = truncatedTowardZero(frame.size.width),
          .height = truncatedTowardZero(frame.size.height)};
}

void checkButtonLabel(const Element& element, std::vector<AuditIssue>& issues) {
  if (element.isButton && isBlank(element.label)) {
    issues.push_back(issueOf(element, place("Button", element.frame),
                             "Button missing accessibility label", "error"));
  }
}

void checkTouchTarget(const Element& element, std::vector<AuditIssue>& issues) {
  const platform::Size& size = element.frame.size;
  const bool isTouched = element.isButton || element.type == "Link";
  if (!isTouched || (size.width >= smallestTouchTarget && size.height >= smallestTouchTarget)) {
    return;
  }
  std::string name(element.type);
  name += " \"";
  name += platform::firstCharacters(element.label, longestQuotedLabel);
  name += '"';
  issues.push_back(issueOf(element, std::move(name),
                           "Touch target too small (" + integer(size.width) + "x" +
                               integer(size.height) + ", minimum 44x44)",
                           "warning"));
}

void checkImageDescription(const Element& element, std::vector<AuditIssue>& issues) {
  if (element.type == "Image" && isBlank(element.label)) {
    issues.push_back(issueOf(element, place("Image", element.frame),
                             "Image missing accessibility description", "warning"));
  }
}

}  // namespace

std::vector<AuditIssue> audit() {
  std::vector<AuditIssue> issues;
  for (const Element& element : ProbeAccessibilityScanner::scanAll()) {
    checkButtonLabel(element, issues);
    checkTouchTarget(element, issues);
    checkImageDescription(element, issues);
  }
  return issues;
}

}  // namespace tarnix::ProbeAccessibilityAuditor
