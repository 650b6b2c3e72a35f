#include <fmt/format.h>

#include <tuple>

#include "companion/command/crash_reports.h"
#include "companion/command/host_session.h"
#include "companion/command/runtime_commands.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "companion/output/table.h"
#include "probe/link/json_codec.h"

namespace tarnix::companion {
namespace {

using Reports = std::vector<FoundCrashReport>;

/// Of `tarnix crash --json`.
struct ListedReport {
  std::string file;
  CrashReport report;

  static constexpr auto fields() {
    return std::tuple{Field{"file", &ListedReport::file}, Field{"report", &ListedReport::report}};
  }
};

struct ReportList {
  std::vector<ListedReport> reports;

  static constexpr auto fields() { return std::tuple{Field{"reports", &ReportList::reports}}; }
};

/// A signal says nothing that its name does not.
std::string whatHappened(const CrashReport& report) {
  return report.type == "Signal" ? report.name : report.name + ": " + report.reason;
}

std::string describe(const FoundCrashReport& found, const Terminal& terminal) {
  const CrashReport& report = found.report;
  std::string text = terminal.styled(printable(report.bundleId), Style::heading) + "  " +
                     terminal.styled(printable(whatHappened(report)), Style::failure) + "\n";
  const auto addLine = [&](std::string_view name, std::string_view value) {
    text += fmt::format("  {:<9}{}\n", name, printable(value));
  };
  addLine("when", report.timestamp);
  addLine("screen", report.screen);
  addLine("request", report.lastRequest);
  addLine("report", found.file.string());
  for (const std::string& frame : report.stack) {
    text += "    " + printable(frame) + "\n";
  }
  return text;
}

std::string listOf(const Reports& reports, std::size_t first, const Terminal& terminal) {
  Table table({{"WHEN"}, {"APPLICATION"}, {"WHAT"}, {"SCREEN"}});
  for (std::size_t index = first; index < reports.size(); ++index) {
    const CrashReport& report = reports[index].report;
    table.addRow({report.timestamp, report.bundleId, whatHappened(report), report.screen});
  }
  return "\n" + terminal.styled("Earlier, --all shows them", Style::heading) + "\n" +
         table.render(terminal);
}

std::string describe(const Reports& reports, bool all, const Terminal& terminal) {
  std::string text;
  const std::size_t described = all ? reports.size() : 1;
  for (std::size_t index = 0; index < described; ++index) {
    text += (index > 0 ? "\n" : "") + describe(reports[index], terminal);
  }
  return described < reports.size() ? text + listOf(reports, described, terminal) : text;
}

ExitCode writeJson(const Reports& reports, const CommandOptions& options) {
  ReportList list;
  for (const FoundCrashReport& found : reports) {
    list.reports.push_back({found.file.string(), found.report});
  }
  const std::optional<std::string> json = encodeJson(list);
  return json ? writeToStandardOutput(printableJson(*json) + "\n", options)
              : report(ExitCode::failure, "the name of a report is not text.", options);
}

}  // namespace

ExitCode runCrash(const CommandOptions& options, const CrashOptions& crash) {
  const Reports reports = findCrashReports(crash.folder, crash.application);
  if (options.json) {
    return writeJson(reports, options);
  }
  if (reports.empty()) {
    return writeToStandardOutput(
        crash.application.empty()
            ? "No application has left a crash report.\n"
            : fmt::format("No application with \"{}\" in its identifier has left a crash report.\n",
                          printable(crash.application)),
        options);
  }
  return writeToStandardOutput(
      describe(reports, crash.all, Terminal::standardOutput(options.noColor)), options);
}

}  // namespace tarnix::companion
