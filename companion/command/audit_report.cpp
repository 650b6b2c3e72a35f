#include "companion/command/audit_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "companion/output/counted.h"
#include "companion/output/display_text.h"
#include "companion/output/table.h"
#include "probe/link/json_writer.h"

namespace tarnix::companion {
namespace {

using ProbeAccessibilityAuditor::AuditIssue;

struct Rule {
  const char* id;
  /// How its issues begin.
  std::string_view beginning;
  const char* help;
};

constexpr std::array rules = {
    Rule{"button-label", "Button missing accessibility label",
         "A button needs a name: assistive technology has nothing else to say of it."},
    Rule{"touch-target", "Touch target too small",
         "What is to be touched should be at least 44 by 44 device-independent pixels large."},
    Rule{"image-description", "Image missing accessibility description",
         "An image needs a description, or to be left out of what assistive technology reads."},
    Rule{"other", "", "Something else keeps people from using the element."},
};

const Rule& ruleOf(const AuditIssue& issue) {
  return *std::find_if(rules.begin(), rules.end(),
                       [&](const Rule& rule) { return issue.issue.starts_with(rule.beginning); });
}

/// `text` as a part of a relative URI.
std::string uriPart(std::string_view text) {
  std::string result;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (std::isalnum(byte) != 0 || character == '-' || character == '_' || character == '.') {
      result += character;
    } else {
      result += fmt::format("%{:02X}", byte);
    }
  }
  return result;
}

void field(JsonWriter& writer, std::string_view name, std::string_view value) {
  writer.key(name);
  writer.string(value);
}

/// What SARIF has instead of plain text.
void messageField(JsonWriter& writer, std::string_view name, std::string_view text) {
  writer.key(name);
  writer.startObject();
  field(writer, "text", text);
  writer.endObject();
}

void writeTool(JsonWriter& writer) {
  writer.key("tool");
  writer.startObject();
  writer.key("driver");
  writer.startObject();
  field(writer, "name", "tarnix audit");
  field(writer, "version", TARNIX_VERSION);
  writer.key("rules");
  writer.startArray();
  for (const Rule& rule : rules) {
    writer.startObject();
    field(writer, "id", rule.id);
    messageField(writer, "shortDescription", rule.help);
    writer.endObject();
  }
  writer.endArray();
  writer.endObject();
  writer.endObject();
}

void writeLocation(JsonWriter& writer, const AuditIssue& issue, const std::string& application,
                   const std::string& screen) {
  writer.startObject();
  writer.key("physicalLocation");
  writer.startObject();
  writer.key("artifactLocation");
  writer.startObject();
  field(writer, "uri", uriPart(application) + "/" + uriPart(screen));
  writer.endObject();
  writer.key("region");
  writer.startObject();
  writer.key("startLine");
  writer.integer(1);
  writer.endObject();
  writer.endObject();
  writer.key("logicalLocations");
  writer.startArray();
  writer.startObject();
  field(writer, "name", issue.element);
  field(writer, "fullyQualifiedName", screen + "/" + issue.element);
  field(writer, "kind", "element");
  writer.endObject();
  writer.endArray();
  writer.endObject();
}

void writeResult(JsonWriter& writer, const AuditIssue& issue, const std::string& application,
                 const std::string& screen) {
  writer.startObject();
  field(writer, "ruleId", ruleOf(issue).id);
  field(writer, "level", issue.severity == "error" ? "error" : "warning");
  messageField(writer, "message", issue.element + ": " + issue.issue);
  writer.key("locations");
  writer.startArray();
  writeLocation(writer, issue, application, screen);
  writer.endArray();
  writer.key("properties");
  writer.startObject();
  for (const auto& [name, value] :
       {std::pair{"x", issue.x}, std::pair{"y", issue.y}, std::pair{"width", issue.width},
        std::pair{"height", issue.height}}) {
    writer.key(name);
    writer.integer(value);
  }
  writer.endObject();
  writer.endObject();
}

}  // namespace

std::string auditTable(const AccessibilityAuditResponse& audit, const Terminal& terminal) {
  Table table({{"SEVERITY"}, {"ELEMENT"}, {"ISSUE"}, {"FRAME", Alignment::right}});
  for (const AuditIssue& issue : audit.issues) {
    table.addRow({issue.severity, issue.element, issue.issue,
                  fmt::format("{},{} {}x{}", issue.x, issue.y, issue.width, issue.height)});
  }
  const std::size_t errors = errorCount(audit);
  return terminal.styled(
             fmt::format("{}: {}, {}", printable(audit.screen), counted(errors, "error"),
                         counted(audit.issues.size() - errors, "warning")),
             Style::heading) +
         "\n" + (table.isEmpty() ? "" : table.render(terminal));
}

std::string sarifLog(const AccessibilityAuditResponse& audit, const std::string& application) {
  JsonWriter writer;
  writer.startObject();
  field(writer, "$schema", "https://json.schemastore.org/sarif-2.1.0.json");
  field(writer, "version", "2.1.0");
  writer.key("runs");
  writer.startArray();
  writer.startObject();
  writeTool(writer);
  writer.key("results");
  writer.startArray();
  for (const AuditIssue& issue : audit.issues) {
    writeResult(writer, issue, application, audit.screen);
  }
  writer.endArray();
  writer.endObject();
  writer.endArray();
  writer.endObject();
  std::string text;
  writer.take(text);
  return text;
}

std::size_t errorCount(const AccessibilityAuditResponse& audit) {
  return static_cast<std::size_t>(
      std::count_if(audit.issues.begin(), audit.issues.end(),
                    [](const AuditIssue& issue) { return issue.severity == "error"; }));
}

}  // namespace tarnix::companion
