#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "companion/command/command_line.h"
#include "companion/command/command_options.h"
#include "companion/command/commands.h"
#include "companion/command/exit_code.h"
#include "companion/command/input_command_line.h"
#include "companion/command/overlay_commands.h"
#include "companion/command/runtime_command_line.h"
#include "companion/command/screen_command_line.h"
#include "companion/command/traffic_command_line.h"
#include "companion/output/display_text.h"

namespace tarnix::companion {
namespace {

constexpr const char* description =
    "Shows what a desktop application with the Tarnix probe in it does.\n"
    "Start one with `tarnix run APP`, then ask it with the other commands.";

/// The words behind the options are not the parser's: they are the application's command line.
class RunUsage : public CLI::Formatter {
 public:
  std::string make_usage(const CLI::App*, std::string name) const override {
    return "Usage: " + name + " [OPTIONS] [--] APP [ARG...]\n";
  }
};

std::string namesOf(const std::vector<const CLI::App*>& commands) {
  std::string names;
  for (const CLI::App* command : commands) {
    names += (names.empty() ? "" : " or ") + command->get_name();
  }
  return names;
}

/// The command that a command line got to, such as " mock add".
std::string commandReached(const CLI::App& app) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  return commands.empty() ? ""
                          : " " + commands.front()->get_name() + commandReached(*commands.front());
}

/// Of a command that another word must follow, such as `tarnix mock`.
std::string explainMissingWord(const CLI::App& command) {
  const std::string words = namesOf(command.get_subcommands({}));
  const std::vector<std::string> extra = command.remaining();
  if (extra.empty()) {
    return "Say what to do: " + words;
  }
  return extra.front().starts_with('-')
             ? fmt::format("The option {} stands behind {}", extra.front(), words)
             : fmt::format("There is no \"{} {}\". Say {}", command.get_name(), extra.front(),
                           words);
}

const CLI::App& commandReachedIn(const CLI::App& app) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  return commands.empty() ? app : commandReachedIn(*commands.front());
}

/// Words that the command does not know; empty where it knows all. A name that is mistyped is told
/// rather than what follows from it, such as that its value is no number.
std::string explainUnknownWords(const CLI::App& command) {
  const std::vector<std::string> words = command.remaining();
  // Negative numbers are words.
  const auto isOption = [](const std::string& word) {
    return word.size() > 1 && word.front() == '-' && (word[1] < '0' || word[1] > '9');
  };
  if (const auto option = std::find_if(words.begin(), words.end(), isOption);
      option != words.end()) {
    return fmt::format("There is no option \"{}\" here", *option);
  }
  return words.empty() ? "" : fmt::format("\"{}\" is one word too many", words.front());
}

/// What is wrong with a command line, and where to read how it should be.
std::string explain(const CLI::App& app, const CLI::Error& error,
                    const std::vector<std::string>& arguments) {
  const std::vector<CLI::App*> commands = app.get_subcommands();
  const std::vector<std::string> extra = app.remaining();
  std::string what = error.what();
  if (commands.empty() && extra.empty()) {
    what = "Say what to do";
  } else if (commands.empty()) {
    what = fmt::format("There is no {} \"{}\"",
                       extra.front().starts_with('-') ? "option" : "command", extra.front());
  } else if (!commands.front()->get_subcommands({}).empty() &&
             commands.front()->get_subcommands().empty()) {
    what = explainMissingWord(*commands.front());
  } else if (!extra.empty() && arguments.front().starts_with('-')) {
    what = fmt::format("The option {} stands behind the command", arguments.front());
  } else if (std::string unknown = explainUnknownWords(commandReachedIn(app)); !unknown.empty()) {
    what = std::move(unknown);
  }
  return fmt::format("tarnix: {}. `tarnix{} --help` shows how it is used.\n", printable(what),
                     commandReached(app));
}

int parseAndRun(int argumentCount, char** arguments) {
  CommandOptions options;
  SyncOptions sync;
  HtmlOptions html;
  std::function<int()> action;
  const auto does = [&](CLI::App* command, auto function) {
    command->callback(
        [&action, function] { action = [function] { return static_cast<int>(function()); }; });
  };

  CLI::App app(description, "tarnix");
  app.set_version_flag("--version", std::string("tarnix ") + TARNIX_VERSION);
  app.footer(exitCodeHelp);
  app.require_subcommand(1);
  CLI::App* run = app.add_subcommand(
      "run", "Start an application with the probe in it; ends as the application does");
  run->footer(
      "After the options come the program, APP, and its own arguments.\n--timeout is how long an "
      "application may take to show up before that is said;\n"
      "--json prints {\"application\", \"pid\", \"port\"} on standard error when it has.");
  run->formatter(std::make_shared<RunUsage>());
  addOutputOptions(*run, options);
  const CommandLine line = splitCommandLine({arguments, arguments + argumentCount});
  app.failure_message([&line](const CLI::App* failed, const CLI::Error& error) {
    return explain(*failed, error, line.own);
  });
  does(run, [&options, &line] {
    if (line.application.empty()) {
      throw CLI::RequiredError("A program to run");
    }
    return runApplication(options, line.application);
  });

  CLI::App* list = app.add_subcommand("list", "List the applications that can be reached");
  list->footer("--json prints {\"hosts\": [{\"application\", \"name\", \"pid\", \"port\"}]}.");
  addOutputOptions(*list, options);
  does(list, [&options] { return runList(options); });

  CLI::App* syncCommand =
      addHostCommand(app, "sync", "Show what an application's probe has captured so far", options);
  syncCommand->footer("--json prints the payload of the probe's message \"sync.full\".");
  syncCommand->add_flag("--all", sync.all, "Show every request and log line");
  does(syncCommand, [&options, &sync] { return runSync(options, sync); });

  CLI::App* htmlCommand =
      addHostCommand(app, "html", "Read an application's screen as HTML", options);
  htmlCommand->footer("--json prints {\"screen\", \"html\", \"elementCount\"}.");
  htmlCommand->add_option("-o,--output", html.file, "Write the document to this file")
      ->type_name("FILE");
  does(htmlCommand, [&options, &html] { return runHtml(options, html); });

  addInputCommands(app, options, does);
  addScreenCommands(app, options, does);
  addTrafficCommands(app, options, does);
  addRuntimeCommands(app, options, does);
  addOverlayCommands(app, options, does);

  try {
    // CLI11 takes them off the end.
    app.parse(std::vector<std::string>(line.own.rbegin(), line.own.rend()));
    return action();
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::usage);
  }
}

}  // namespace
}  // namespace tarnix::companion

int main(int argumentCount, char** arguments) {
  std::setlocale(LC_CTYPE, "");
  try {
    return tarnix::companion::parseAndRun(argumentCount, arguments);
  } catch (const std::exception& error) {
    fmt::print(stderr, "tarnix: {}\n", error.what());
    return static_cast<int>(tarnix::companion::ExitCode::failure);
  }
}
