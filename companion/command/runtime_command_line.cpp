#include "companion/command/runtime_command_line.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "companion/command/log_filter_options.h"
#include "companion/command/runtime_commands.h"

namespace tarnix::companion {
namespace {

/// Where nothing else is said, as many as fit beside the rest on a screen.
constexpr std::uint64_t newestShown = 100;

}  // namespace

void addRuntimeCommands(CLI::App& app, CommandOptions& options,
                        const std::function<void(CLI::App*, std::function<ExitCode()>)>& does) {
  const auto logs = std::make_shared<LogsOptions>();
  logs->newest = newestShown;
  CLI::App* logsCommand =
      addHostCommand(app, "logs", "Show what an application writes to its log", options);
  logsCommand->footer(
      "A line has a level and a category where it says so, as \"[warning] net.http: timed out\" "
      "does; any other is\na debug line of the category \"app\". A Qt application says so when it "
      "is started with\n  QT_MESSAGE_PATTERN='[%{type}] %{category}: %{message}'\n\n"
      "--json prints each line as the probe sends it, one on a line.");
  logsCommand->add_flag("-f,--follow", logs->follow, "Go on with new lines, until Ctrl-C");
  addLogFilterOptions(*logsCommand, logs->filter);
  logsCommand
      ->add_option("--newest", logs->newest, "How many of the lines that are there; 0 for all")
      ->type_name("N")
      ->capture_default_str();
  logsCommand->add_option("--count", logs->count, "End after so many lines")->type_name("N");
  does(logsCommand, [&options, logs] { return runLogs(options, *logs); });

  const auto crash = std::make_shared<CrashOptions>();
  CLI::App* crashCommand =
      app.add_subcommand("crash", "Show what applications left behind that crashed");
  crashCommand->footer("--json prints {\"reports\": [{\"file\", \"report\"}]}, newest first.");
  addOutputOptions(*crashCommand, options);
  crashCommand->add_option("APPLICATION", crash->application,
                           "Only those with this in their identifiers");
  crashCommand->add_flag("--all", crash->all, "Show every report as a whole");
  crashCommand->add_option("--in", crash->folder, "Where the reports lie")
      ->type_name("FOLDER")
      ->capture_default_str();
  does(crashCommand, [&options, crash] { return runCrash(options, *crash); });
}

}  // namespace tarnix::companion
