#include <fmt/format.h>

#include <variant>

#include "companion/command/host_answer.h"
#include "companion/command/screen_commands.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "companion/output/time_of_day.h"
#include "probe/model/get_console_cmd.h"
#include "probe/model/web_view_console_response.h"

namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

/// From 1970, which this message counts from, to 2001, which all others do.
constexpr double secondsBetweenReferences = 978'307'200;

std::string lineOf(const ConsoleEntryResponse& entry, const Terminal& terminal) {
  const std::string level = fmt::format("{:<5}", printable(entry.level));
  const bool isError = entry.level == "error";
  std::string line = timeOfDay({entry.timestamp - secondsBetweenReferences}) + "  " +
                     (isError || entry.level == "warn"
                          ? terminal.styled(level, isError ? Style::failure : Style::warning)
                          : level) +
                     "  " + printable(entry.message);
  if (entry.url) {
    line += "  " + terminal.styled(printable(*entry.url), Style::quiet);
  }
  return line + "\n";
}

}  // namespace

ExitCode runConsole(const CommandOptions& options, const ConsoleOptions& console) {
  const std::optional<CompanionMessage> command = CompanionMessage::make(
      Type::commandGetWebViewConsole, GetConsoleCmd{console.level, console.limit}, Timestamp{});
  if (!command) {
    return report(ExitCode::usage, "the level is not text in UTF-8.", options);
  }
  const auto answer = ask<WebViewConsoleResponse>(*command, Type::responseWebViewConsole, options);
  if (const ExitCode* code = std::get_if<ExitCode>(&answer)) {
    return *code;
  }
  const auto& [response, payload] = std::get<0>(answer);
  if (options.json) {
    return writeToStandardOutput(printableJson(payload) + "\n", options);
  }
  const Terminal terminal = Terminal::standardOutput(options.noColor);
  std::string text;
  for (const ConsoleEntryResponse& entry : response.entries) {
    text += lineOf(entry, terminal);
  }
  text +=
      terminal.styled(fmt::format("{} of {} lines", response.entries.size(), response.totalCount),
                      Style::quiet) +
      "\n";
  return writeToStandardOutput(text, options);
}

}  // namespace tarnix::companion
