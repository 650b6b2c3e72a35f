#include "companion/command/screen_command_line.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "companion/command/screen_commands.h"

namespace tarnix::companion {
namespace {

// Between a busy loop and a day.
constexpr double shortestInterval = 0.02;
constexpr double longestInterval = 86'400;

CLI::App* addCommand(CLI::App& app, const char* name, const char* description, const char* footer,
                     CommandOptions& options) {
  CLI::App* command = addHostCommand(app, name, description, options);
  command->footer(footer);
  return command;
}

}  // namespace

void addScreenCommands(CLI::App& app, CommandOptions& options,
                       const std::function<void(CLI::App*, std::function<ExitCode()>)>& does) {
  does(addCommand(app, "text", "Read what is written on an application's screen",
                  "--json prints {\"screen\", \"lines\"}.", options),
       [&options] { return runText(options); });

  const auto find = std::make_shared<FindOptions>();
  CLI::App* findCommand =
      addCommand(app, "find", "Find elements on an application's screen by their label",
                 "Upper and lower case are the same. Ends with 8 when there is none.\n"
                 "--json prints {\"screen\", \"query\", \"results\"}.",
                 options);
  findCommand->add_option("TEXT", find->text, "The label, or a part of it")->required();
  findCommand->add_flag("--exact", find->exact, "The whole label only");
  does(findCommand, [&options, find] { return runFind(options, *find); });

  does(addCommand(app, "snapshot", "List the views of an application's screen",
                  "A tree on a terminal, made by which frame holds which; elsewhere a table.\n"
                  "--json prints {\"screen\", \"elements\"}.",
                  options),
       [&options] { return runSnapshot(options); });

  const auto screenshot = std::make_shared<ScreenshotOptions>();
  CLI::App* screenshotCommand = addCommand(
      app, "screenshot", "Take a picture of an application's screen, as a PNG file",
      "Without FILE the picture is shown, on terminals that can; elsewhere it goes to\n"
      "standard output. --json prints {\"screen\", \"file\"}, without FILE {\"screen\",\n"
      "\"base64PNG\"}; a picture that goes to standard output stays alone there.",
      options);
  screenshotCommand->add_option("FILE", screenshot->file, "Where it goes; - is standard output");
  screenshotCommand->add_flag("--show", screenshot->show, "Show it on the terminal, too");
  does(screenshotCommand, [&options, screenshot] { return runScreenshot(options, *screenshot); });

  const auto audit = std::make_shared<AuditOptions>();
  CLI::App* auditCommand =
      addCommand(app, "audit", "Look for what keeps people from using an application's screen",
                 "Ends with 8 when there are errors.\n"
                 "--json prints {\"screen\", \"issues\", \"issueCount\"}.",
                 options);
  auditCommand
      ->add_option("--sarif", audit->sarifFile,
                   "Also write a SARIF log to this file; - prints it alone")
      ->type_name("FILE");
  auditCommand->add_flag("--strict", audit->strict, "End with 8 when there are warnings, too");
  does(auditCommand, [&options, audit] { return runAudit(options, *audit); });

  const auto perf = std::make_shared<PerfOptions>();
  CLI::App* perfCommand =
      addCommand(app, "perf", "Show an application's frame rate and memory",
                 "FPS is how often in a second the application's main thread got round to a frame, "
                 "of the screen's refresh\nrate: less means that it was busy. AVERAGE and PEAK are "
                 "of what was\nmeasured once a second in the last minute; MEMORY is of now.\n\n"
                 "--json prints {\"fps\", \"memoryMB\", \"avgFPS\", \"peakMemoryMB\", \"screen\"}, "
                 "one on a line.",
                 options);
  perfCommand->add_flag("--watch", perf->watch, "Go on with new lines, until Ctrl-C");
  perfCommand->add_option("--interval", perf->intervalSeconds, "Time between them, in seconds")
      ->check(CLI::Range(shortestInterval, longestInterval).description(""))
      ->type_name("SECONDS")
      ->capture_default_str();
  perfCommand->add_option("--count", perf->count, "End after so many lines")->type_name("N");
  does(perfCommand, [&options, perf] { return runPerf(options, *perf); });

  const auto console = std::make_shared<ConsoleOptions>();
  CLI::App* consoleCommand =
      addCommand(app, "console", "Show what an application's web pages wrote to their consoles",
                 "Calls of console.log, error, warn and debug are captured, and the newest 200 of "
                 "all pages kept.\n\n--json prints {\"entries\", \"totalCount\"}.",
                 options);
  consoleCommand->add_option("--level", console->level, "Only lines of this level")
      ->check(CLI::IsMember({"log", "error", "warn", "debug"}))
      ->type_name("LEVEL");
  consoleCommand
      ->add_option("--limit", console->limit, "How many lines, the newest; 50 if not said")
      ->check(CLI::Range(std::int64_t{0}, std::int64_t{1'000'000}).description(""))
      ->type_name("N");
  does(consoleCommand, [&options, console] { return runConsole(options, *console); });
}

}  // namespace tarnix::companion
