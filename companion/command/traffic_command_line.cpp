#include "companion/command/traffic_command_line.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "companion/command/commands.h"
#include "companion/command/log_filter_options.h"

namespace tarnix::companion {
namespace {

void addWatch(CLI::App& app, CommandOptions& options, const SetAction& does) {
  const auto watch = std::make_shared<WatchOptions>();
  CLI::App* command = addHostCommand(
      app, "watch", "Show an application's HTTP exchanges and log as they happen", options);
  command->footer(
      "For example, what fails on one server, with headers and bodies:\n"
      "  tarnix watch --no-log --only-host api.example.org --only-status 400-599 --body\n\n"
      "--json prints each exchange and each line of the log as the probe sends it, one on a line. "
      "The command waits for the application when it is started again, and ends with Ctrl-C.");
  command->add_option("--only-host", watch->hosts, "Only hosts with this in their name")
      ->type_name("TEXT");
  command->add_option("--only-method,--method", watch->methods, "Only this method")
      ->type_name("METHOD");
  command
      ->add_option("--only-status,--status", watch->statuses,
                   "Only these: a code, 4xx, 200-299, or error where no response came")
      ->type_name("STATUS");
  command->add_flag("--body", watch->body, "Show headers and bodies too");
  command->add_flag("--all", watch->all, "Begin with what was captured before");
  command->add_option("--count", watch->count, "End after so many exchanges and lines")
      ->type_name("N");
  addLogFilterOptions(*command, *watch->log);
  command->add_flag_callback(
      "--no-log", [watch] { watch->log.reset(); }, "Only exchanges, no lines of the log");
  does(command, [&options, watch] { return runWatch(options, *watch); });
}

/// What both kinds of rule have.
template <class RuleOptions>
void addRuleOptions(CLI::App& command, RuleOptions& rule, const char* what) {
  command.add_option("PATTERN", rule.pattern, "Requests whose URL has this in it; see --match")
      ->required();
  command
      .add_option("--match", rule.mode,
                  "How PATTERN is compared with the URL: contains (the default), prefix, or regex "
                  "(ICU syntax, found anywhere in the URL)")
      ->check(CLI::IsMember({"contains", "prefix", "regex"}))
      ->type_name("MODE");
  command.add_option("--method", rule.method, "Only requests of this method; any unless given")
      ->type_name("METHOD");
  command.add_option("--rule-name", rule.name, what)->type_name("TEXT");
}

CLI::App* addRuleCommand(CLI::App& app, const char* name, const char* description) {
  CLI::App* command = app.add_subcommand(name, description);
  command->footer(
      "A probe does not list its rules: keep the identifier that `add` prints. Every rule ends "
      "with the application.");
  command->require_subcommand(1);
  return command;
}

void addRemove(CLI::App& parent, CommandOptions& options, const SetAction& does,
               ExitCode (*remove)(const CommandOptions&, const std::string&)) {
  const auto id = std::make_shared<std::string>();
  CLI::App* command = addHostCommand(parent, "remove", "Take a rule away", options);
  command->footer(
      "A probe does not answer this: an identifier that it does not have changes nothing, and that "
      "is not said.");
  command->add_option("RULE", *id, "The identifier that `add` printed")->required();
  does(command, [&options, id, remove] { return remove(options, *id); });
}

void addMock(CLI::App& app, CommandOptions& options, const SetAction& does) {
  CLI::App* parent =
      addRuleCommand(app, "mock", "Answer an application's requests in place of the network");
  const auto mock = std::make_shared<MockOptions>();
  CLI::App* add = addHostCommand(*parent, "add", "Add a rule; the first that fits counts", options);
  add->footer(
      "For example, to see what an application makes of an empty list, and of a broken server:\n"
      "  tarnix mock add /api/articles --method GET --body '[]'\n"
      "  tarnix mock add /api/ --status 503 --header 'Retry-After: 60' --body @error.html\n\n"
      "Prints the identifier of the rule, which `tarnix mock remove` takes; with --json, "
      "{\"ruleId\"}. The rule holds until it is removed or the application ends.");
  addRuleOptions(*add, *mock, "What the rule is called");
  add->add_option("--status", mock->status, "Status of the answer; 200 unless given")
      ->check(CLI::Range(100, 999))
      ->type_name("CODE");
  add->add_option("--body", mock->body,
                  "Body of the answer; {} unless given; @FILE takes it from a file")
      ->type_name("TEXT");
  add->add_option("--header", mock->headers,
                  "A header of the answer, can be given several times; Content-Type: "
                  "application/json unless any is given")
      ->type_name("'NAME: VALUE'");
  does(add, [&options, mock] { return runMockAdd(options, *mock); });
  addRemove(*parent, options, does, runMockRemove);
}

void addIntercept(CLI::App& app, CommandOptions& options, const SetAction& does) {
  CLI::App* parent = addRuleCommand(app, "intercept", "Have an application's requests fail");
  const auto intercept = std::make_shared<InterceptOptions>();
  CLI::App* add =
      addHostCommand(*parent, "add", "Add a rule; a mock that fits comes first", options);
  add->footer(
      "For example, to see what an application does without one of its servers:\n"
      "  tarnix intercept add https://cdn.example.org/ --match prefix\n\n"
      "Prints the identifier of the rule, which `tarnix intercept remove` takes; with --json, "
      "{\"ruleId\"}. The rule holds until it is removed or the application ends.");
  addRuleOptions(*add, *intercept, "What the rule is called; the application's error names it");
  does(add, [&options, intercept] { return runInterceptAdd(options, *intercept); });
  addRemove(*parent, options, does, runInterceptRemove);
}

}  // namespace

void addTrafficCommands(CLI::App& app, CommandOptions& options, const SetAction& does) {
  addWatch(app, options, does);
  addMock(app, options, does);
  addIntercept(app, options, does);

  CLI::App* clear =
      addHostCommand(app, "clear", "Forget what an application's probe has captured", options);
  clear->footer(
      "The rules stay. The name of the screen is \"Unknown\" until the next one shows. A `tarnix "
      "watch` beside it may miss what happened in the moment before: it "
      "gives way to other commands, and comes back to what the probe has kept.");
  does(clear, [&options] { return runClear(options); });

  const auto url = std::make_shared<std::string>();
  CLI::App* open = addHostCommand(app, "open", "Open a URL inside an application", options);
  open->add_option("URL", *url, "Handlers that the application registered come first")->required();
  does(open, [&options, url] { return runOpen(options, *url); });

  const auto file = std::make_shared<std::string>();
  CLI::App* har =
      addHostCommand(app, "har", "Write the exchanges that were kept as an HTTP archive", options);
  har->footer(
      "--json prints {\"file\", \"exchangeCount\"} when the archive is written; one that goes to "
      "standard output stays alone there.");
  har->add_option("FILE", *file, "Where to; - for standard output")->required();
  does(har, [&options, file] { return runHar(options, *file); });
}

}  // namespace tarnix::companion
