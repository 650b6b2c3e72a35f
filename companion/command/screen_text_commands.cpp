#include <fmt/format.h>

#include <variant>

#include "companion/command/host_answer.h"
#include "companion/command/screen_commands.h"
#include "companion/command/standard_output.h"
#include "companion/command/view_tree.h"
#include "companion/output/counted.h"
#include "companion/output/display_text.h"
#include "companion/output/table.h"
#include "probe/model/find_command.h"
#include "probe/model/find_response.h"
#include "probe/model/screen_text_response.h"
#include "probe/model/snapshot_response.h"

namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

std::string frameText(std::int64_t x, std::int64_t y, std::int64_t width, std::int64_t height) {
  return fmt::format("{},{} {}x{}", x, y, width, height);
}

std::string describe(const FindResponse& found, const Terminal& terminal) {
  Table table({{"TYPE"}, {"LABEL"}, {"TAP AT", Alignment::right}, {"FRAME", Alignment::right}});
  for (const FoundElement& element : found.results) {
    table.addRow({element.type, element.label,
                  fmt::format("{},{}", element.centerX, element.centerY),
                  frameText(element.x, element.y, element.width, element.height)});
  }
  return table.render(terminal);
}

/// A tree for those who look at it, a table for what reads lines.
std::string describe(const SnapshotResponse& snapshot, const Terminal& terminal) {
  const std::string title = terminal.styled(fmt::format("{}: {}", printable(snapshot.screen),
                                                        counted(snapshot.elements.size(), "view")),
                                            Style::heading) +
                            "\n";
  if (terminal.isTerminal()) {
    return title + treeOf(snapshot.elements, terminal);
  }
  Table table({{"TYPE"}, {"LABEL"}, {"IDENTIFIER"}, {"FRAME", Alignment::right}, {"TOUCH"}});
  for (const SnapshotElement& element : snapshot.elements) {
    table.addRow({element.type, element.label.value_or("-"), element.identifier.value_or("-"),
                  frameText(element.x, element.y, element.width, element.height),
                  element.interactive ? "yes" : ""});
  }
  return title + (table.isEmpty() ? "" : table.render(terminal));
}

/// Beside the lines, so that these stay clean for programs.
void saySilence(const std::string& screen, const CommandOptions& options) {
  fmt::print(
      stderr, "{}\n",
      Terminal::standardError(options.noColor)
          .styled(fmt::format("-- nothing is written on the screen \"{}\". `tarnix snapshot` "
                              "lists its views.",
                              printable(screen)),
                  Style::quiet));
}

ExitCode writeJson(const std::string& payload, const CommandOptions& options) {
  return writeToStandardOutput(printableJson(payload) + "\n", options);
}

}  // namespace

ExitCode runText(const CommandOptions& options) {
  const auto answer = ask<ScreenTextResponse>(makeCommand(Type::commandScreenText),
                                              Type::responseScreenText, options);
  if (const ExitCode* code = std::get_if<ExitCode>(&answer)) {
    return *code;
  }
  const auto& [response, payload] = std::get<0>(answer);
  if (options.json) {
    return writeJson(payload, options);
  }
  if (response.lines.empty()) {
    saySilence(response.screen, options);
  }
  std::string text;
  for (const std::string& line : response.lines) {
    text += printable(line) + "\n";
  }
  return writeToStandardOutput(text, options);
}

ExitCode runFind(const CommandOptions& options, const FindOptions& find) {
  const std::optional<CompanionMessage> command = CompanionMessage::make(
      Type::commandFindElement,
      FindCommand{find.text, find.exact ? std::optional(true) : std::nullopt}, Timestamp{});
  if (!command) {
    return report(ExitCode::usage, "what is to be found is not text in UTF-8.", options);
  }
  const auto answer = ask<FindResponse>(*command, Type::responseFindElement, options);
  if (const ExitCode* code = std::get_if<ExitCode>(&answer)) {
    return *code;
  }
  const auto& [response, payload] = std::get<0>(answer);
  const ExitCode found = response.results.empty() ? ExitCode::negative : ExitCode::success;
  if (options.json) {
    const ExitCode written = writeJson(payload, options);
    return written == ExitCode::success ? found : written;
  }
  if (response.results.empty()) {
    return report(found,
                  fmt::format("nothing on the screen \"{}\" is labelled \"{}\". `tarnix text` "
                              "shows what is there.",
                              response.screen, find.text),
                  options);
  }
  return writeToStandardOutput(describe(response, Terminal::standardOutput(options.noColor)),
                               options);
}

ExitCode runSnapshot(const CommandOptions& options) {
  const auto answer = ask<SnapshotResponse>(makeCommand(Type::commandRequestSnapshot),
                                            Type::responseSnapshot, options);
  if (const ExitCode* code = std::get_if<ExitCode>(&answer)) {
    return *code;
  }
  const auto& [response, payload] = std::get<0>(answer);
  if (options.json) {
    return writeJson(payload, options);
  }
  return writeToStandardOutput(describe(response, Terminal::standardOutput(options.noColor)),
                               options);
}

}  // namespace tarnix::companion
