#include "companion/command/input_command_line.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdint>
#include <memory>
#include <string>
#include <system_error>

#include "companion/command/input_commands.h"

namespace tarnix::companion {
namespace {

constexpr const char* jsonHelp = "--json prints {\"step\", \"success\", \"message\"}";

CLI::App* addCommand(CLI::App& app, const char* name, const char* description,
                     CommandOptions& options) {
  CLI::App* command = addHostCommand(app, name, description, options);
  command->footer(std::string(jsonHelp) + ".");
  return command;
}

/// A coordinate as the probe takes it. The parser itself would take the nearest number that it can
/// hold for one that it cannot.
CLI::Option* addCoordinate(CLI::App& command, const char* name, std::int64_t& value,
                           const char* description = "") {
  return command.add_option(name, value, description)->check([](const std::string& text) {
    std::int64_t parsed = 0;
    const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(begin, end, parsed);
    if (stop != end) {
      return "\"" + text + "\" is no whole number";
    }
    return error == std::errc() ? std::string() : text + " is farther than any screen reaches";
  });
}

}  // namespace

void addInputCommands(CLI::App& app, CommandOptions& options,
                      const std::function<void(CLI::App*, std::function<ExitCode()>)>& does) {
  const auto tap = std::make_shared<TapStep>();
  CLI::App* tapCommand =
      addCommand(app, "tap", "Tap a point of an application, or what is labelled so", options);
  CLI::Option* x = addCoordinate(*tapCommand, "X", tap->x, "As `tarnix html` tells");
  CLI::Option* y = addCoordinate(*tapCommand, "Y", tap->y);
  CLI::Option* label =
      tapCommand
          ->add_option("--text", tap->label,
                       "What has this label; where nothing has, what has it in its label")
          ->type_name("LABEL")
          // It would be in every label.
          ->check([](const std::string& text) { return text.empty() ? "it is empty" : ""; });
  label->excludes(x);
  x->needs(y);
  does(tapCommand, [&options, tap, x] {
    if (x->count() == 0 && !tap->label) {
      throw CLI::RequiredError("A point, X Y, or --text");
    }
    return runStep(options, *tap);
  });

  const auto swipe = std::make_shared<SwipeStep>();
  CLI::App* swipeCommand = addCommand(
      app, "swipe", "Scroll what lies under a point by a finger's way to another", options);
  addCoordinate(*swipeCommand, "X1", swipe->x1, "Where the finger starts")->required();
  addCoordinate(*swipeCommand, "Y1", swipe->y1)->required();
  addCoordinate(*swipeCommand, "X2", swipe->x2, "Where it ends")->required();
  addCoordinate(*swipeCommand, "Y2", swipe->y2)->required();
  does(swipeCommand, [&options, swipe] { return runStep(options, *swipe); });

  const auto type = std::make_shared<TypeStep>();
  CLI::App* typeCommand = addCommand(app, "type", "Type a text into what has the focus", options);
  typeCommand->add_option("TEXT", type->text, "Any script")->required();
  does(typeCommand, [&options, type] { return runStep(options, *type); });

  const auto wait = std::make_shared<WaitStep>();
  CLI::App* waitCommand =
      addCommand(app, "wait", "Wait until an application shows something", options);
  waitCommand->footer(std::string(jsonHelp) + ".\n--timeout is how long that may take.");
  waitCommand->add_option("--text", wait->text, "This is in a label or value of the screen");
  waitCommand->add_option("--gone", wait->gone, "This is in none any more");
  waitCommand->add_option("--screen", wait->screen, "The screen has this name");
  does(waitCommand, [&options, wait] {
    if (!wait->text && !wait->gone && !wait->screen) {
      throw CLI::RequiredError("--text, --gone or --screen");
    }
    return runStep(options, *wait);
  });

  const auto file = std::make_shared<std::string>();
  CLI::App* doCommand = addCommand(app, "do", "Do what a file of steps says", options);
  doCommand->footer(
      "The file is a list in YAML, one step an entry:\n"
      "  - tap: New                      a label, or a point: [297, 300]\n"
      "  - swipe: [200, 600, 200, 300]   from the first point to the second\n"
      "  - type: some text\n"
      "  - wait: {text: Ready, within: 5}   or gone: or screen:, and seconds\n"
      "  - pause: 0.5                    seconds\n" +
      std::string(jsonHelp) + ", one a line. The first step that fails is the last.");
  doCommand->add_option("FILE", *file, "The file; - for standard input")->required();
  does(doCommand, [&options, file] { return runSteps(options, *file); });
}

}  // namespace tarnix::companion
