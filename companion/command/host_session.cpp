#include "companion/command/host_session.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

#include "companion/output/display_text.h"
#include "companion/output/table.h"

namespace tarnix::companion {
namespace {

std::string chosenBy(const CommandOptions& options) {
  std::string choice;
  if (options.pid) {
    choice += fmt::format(" with --pid {}", *options.pid);
  }
  if (options.name) {
    choice +=
        fmt::format("{} --name \"{}\"", options.pid ? " and" : " with", printable(*options.name));
  }
  return choice;
}

std::variant<HostTarget, ExitCode> chooseTarget(const CommandOptions& options, Deadline deadline) {
  if (options.port) {
    return HostTarget{{}, {}, std::nullopt, *options.port};
  }
  const Deadline announcementsUntil = std::min(deadline, deadlineIn(announcementTime));
  std::vector<HostTarget> targets =
      discoverMatchingTargets({options.pid, options.name}, announcementsUntil);
  if (targets.empty()) {
    const std::string choice = chosenBy(options);
    return report(ExitCode::noHost,
                  choice.empty() ? "no application with a probe was found. Start one with "
                                   "`tarnix run APP`, or give its --port."
                                 : fmt::format("no application with a probe was found{}. "
                                               "`tarnix list` shows those that there are.",
                                               choice),
                  options);
  }
  if (targets.size() > 1) {
    const Terminal terminal = Terminal::standardError(options.noColor);
    const ExitCode code =
        report(ExitCode::severalHosts,
               fmt::format("there are {} applications with a probe{}. Choose one with --pid, "
                           "--name or --port:",
                           targets.size(), chosenBy(options)),
               options);
    fmt::print(stderr, "{}", describeTargets(targets, terminal));
    return code;
  }
  return std::move(targets.front());
}

}  // namespace

std::string describeTargets(const std::vector<HostTarget>& targets, const Terminal& terminal) {
  Table table({{"APPLICATION"}, {"PID", Alignment::right}, {"PORT", Alignment::right}, {"NAME"}});
  for (const HostTarget& target : targets) {
    table.addRow({target.application.empty() ? "-" : target.application,
                  target.pid ? std::to_string(*target.pid) : "-", std::to_string(target.port),
                  target.serviceName.empty() ? "-" : target.serviceName});
  }
  return table.render(terminal);
}

std::variant<HostSession, ExitCode> openSession(const CommandOptions& options, Deadline deadline) {
  std::variant<HostTarget, ExitCode> target = chooseTarget(options, deadline);
  if (const ExitCode* code = std::get_if<ExitCode>(&target)) {
    return *code;
  }
  HostTarget& chosen = std::get<HostTarget>(target);
  Outcome<CompanionClient> client = CompanionClient::connect({options.host, chosen.port}, deadline);
  if (!client) {
    return report(client.error(), options);
  }
  return HostSession{std::move(chosen), std::move(*client)};
}

ExitCode exitCodeOf(const ClientError& error) {
  switch (error.kind) {
    case ClientError::Kind::unreachable:
    case ClientError::Kind::dropped:
      return ExitCode::connectionFailed;
    case ClientError::Kind::noAnswer:
      return ExitCode::noAnswer;
    case ClientError::Kind::notUnderstood:
      break;
  }
  return ExitCode::notUnderstood;
}

ExitCode report(const ClientError& error, const CommandOptions& options) {
  return report(exitCodeOf(error), error.message, options);
}

ExitCode report(ExitCode code, const std::string& message, const CommandOptions& options) {
  const Terminal terminal = Terminal::standardError(options.noColor);
  fmt::print(stderr, "{} {}\n", terminal.styled("tarnix:", Style::failure), printable(message));
  return code;
}

}  // namespace tarnix::companion
