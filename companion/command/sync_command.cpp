#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "companion/command/commands.h"
#include "companion/command/host_session.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "companion/output/table.h"
#include "companion/output/time_of_day.h"
#include "probe/model/full_sync_payload.h"

namespace tarnix::companion {
namespace {

// As much as fits on a screen beside the rest.
constexpr std::size_t newestShown = 20;

std::string outcomeOf(const TransferableNetworkRequest& request) {
  if (request.statusCode) {
    return std::to_string(*request.statusCode);
  }
  return request.errorDescription.value_or("-");
}

/// The rows of a list that are shown: the newest, which come last.
template <class Item, class AddRow>
std::string section(const char* title, const std::vector<Item>& items, bool all, Table table,
                    const Terminal& terminal, AddRow addRow) {
  const std::size_t first = all || items.size() <= newestShown ? 0 : items.size() - newestShown;
  for (std::size_t index = first; index < items.size(); ++index) {
    addRow(table, items[index]);
  }
  std::string heading = fmt::format("{} ({})", title, items.size());
  if (first > 0) {
    heading += fmt::format(", the newest {}; --all shows them all", newestShown);
  }
  return "\n" + terminal.styled(heading, Style::heading) + "\n" +
         (table.isEmpty() ? "" : table.render(terminal));
}

std::string describeHost(const FullSyncPayload& sync, const HostTarget& target,
                         const Terminal& terminal) {
  std::string text =
      terminal.styled(fmt::format("{} {}", printable(sync.appName), printable(sync.appVersion)),
                      Style::heading) +
      "\n";
  const auto addLine = [&](std::string_view name, std::string_view value) {
    text += fmt::format("  {:<8}{}\n", name, printable(value));
  };
  addLine("device", sync.deviceName);
  addLine("screen", sync.currentScreen);
  if (target.pid) {
    addLine("process", fmt::format("{} ({})", target.application, *target.pid));
  }
  addLine("port", std::to_string(target.port));
  return text;
}

std::string describe(const FullSyncPayload& sync, const HostTarget& target, bool all,
                     const Terminal& terminal) {
  std::string text = describeHost(sync, target, terminal);
  text += section("Settings", sync.userDefaultsEntries, true, Table({{"KEY"}, {"TYPE"}, {"VALUE"}}),
                  terminal, [](Table& table, const TransferableUserDefaultsEntry& entry) {
                    table.addRow({entry.key, entry.valueType, entry.displayValue});
                  });
  text += section("Requests", sync.httpRequests, all,
                  Table({{"TIME"}, {"METHOD"}, {"STATUS"}, {"MS", Alignment::right}, {"URL"}}),
                  terminal, [](Table& table, const TransferableNetworkRequest& request) {
                    table.addRow({timeOfDay(request.timestamp), request.method, outcomeOf(request),
                                  fmt::format("{:.0f}", request.duration * 1000), request.url});
                  });
  text += section(
      "Log", sync.logEntries, all, Table({{"TIME"}, {"LEVEL"}, {"CATEGORY"}, {"MESSAGE"}}),
      terminal, [](Table& table, const TransferableLogEntry& entry) {
        table.addRow({timeOfDay(entry.timestamp), entry.level, entry.category, entry.message});
      });
  return text;
}

}  // namespace

ExitCode runSync(const CommandOptions& options, const SyncOptions& sync) {
  std::variant<HostSession, ExitCode> session = openSession(options, deadlineIn(options.timeout()));
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  const HostSession& host = std::get<HostSession>(session);
  const CompanionMessage& message = host.client.fullSync();
  const std::optional<FullSyncPayload> payload = message.decode<FullSyncPayload>();
  if (!payload) {
    return report(ExitCode::notUnderstood,
                  "the full sync was not understood. Are `tarnix` and the probe of one version?",
                  options);
  }
  if (options.json) {
    return writeToStandardOutput(printableJson(message.payload) + "\n", options);
  }
  return writeToStandardOutput(
      describe(*payload, host.target, sync.all, Terminal::standardOutput(options.noColor)),
      options);
}

}  // namespace tarnix::companion
