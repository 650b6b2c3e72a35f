#include "companion/command/overlay_commands.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>

#include "companion/command/delivery.h"
#include "companion/command/host_session.h"
#include "probe/model/overlay_command.h"

namespace tarnix::companion {
namespace {

struct Effect {
  /// Of the command and, in the protocol, of the category.
  const char* name;
  const char* description;
  /// What the detail says; null for an effect without one.
  const char* detail;
};

constexpr Effect effects[] = {
    {"scan", "A line that sweeps over the window", nullptr},
    {"capture", "A white flash", nullptr},
    {"data", "Rings at the top right", "What is read"},
    {"verify", "A check mark, or with --failed a cross", "What was checked"},
    {"environment", "The name of an environment", "The name"},
};

struct Words {
  std::optional<std::string> detail;
  bool hasFailed = false;
};

void addEffect(CLI::App& overlay, const Effect& effect, CommandOptions& options,
               const std::function<void(CLI::App*, std::function<ExitCode()>)>& does) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = addHostCommand(overlay, effect.name, effect.description, options);
  if (effect.detail != nullptr) {
    command->add_option("DETAIL", words->detail, effect.detail);
  }
  const bool isVerdict = std::string_view(effect.name) == "verify";
  if (isVerdict) {
    command->add_flag("--failed", words->hasFailed, "It did not pass");
  }
  does(command, [&options, words, name = effect.name, isVerdict] {
    return runShowOverlay(options, name, words->detail,
                          isVerdict ? std::optional(!words->hasFailed) : std::nullopt);
  });
}

}  // namespace

ExitCode runShowOverlay(const CommandOptions& options, const std::string& category,
                        const std::optional<std::string>& detail, std::optional<bool> passed) {
  const std::optional<CompanionMessage> command = CompanionMessage::make(
      CompanionMessageType::commandShowOverlay, OverlayCommand{category, detail, passed},
      Timestamp::from(std::chrono::system_clock::now()));
  return command ? deliver(options, *command)
                 : report(ExitCode::usage, "what is to be shown must be UTF-8 text.", options);
}

ExitCode runHideOverlay(const CommandOptions& options) {
  return deliver(options, makeCommand(CompanionMessageType::commandHideOverlay));
}

void addOverlayCommands(CLI::App& app, CommandOptions& options,
                        const std::function<void(CLI::App*, std::function<ExitCode()>)>& does) {
  CLI::App* overlay = app.add_subcommand("overlay", "Show something over an application's windows");
  overlay->require_subcommand(1);
  for (const Effect& effect : effects) {
    addEffect(*overlay, effect, options, does);
  }
  CLI::App* hide =
      addHostCommand(*overlay, "hide", "Let the name of the tool go that is shown", options);
  does(hide, [&options] { return runHideOverlay(options); });
}

}  // namespace tarnix::companion
