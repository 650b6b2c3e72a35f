#include "companion/command/command_options.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace tarnix::companion {
namespace {

/// As URLs have them around an address of IPv6. Answers with no complaint.
std::string withoutBrackets(std::string& address) {
  if (address.size() > 2 && address.front() == '[' && address.back() == ']') {
    address = address.substr(1, address.size() - 2);
  }
  return {};
}

}  // namespace

void addOutputOptions(CLI::App& command, CommandOptions& options) {
  // A day is as good as no limit, and far from what a clock can hold.
  constexpr double shortestTimeout = 0.001;
  constexpr double longestTimeout = 86'400;
  const auto isNumber = [](const std::string& text) {
    // No range excludes what compares with nothing.
    return std::isnan(std::strtod(text.c_str(), nullptr)) ? "is not a number of seconds"
                                                          : std::string();
  };
  command.add_flag("--json", options.json, "Print JSON for programs, on one line");
  command.add_flag("--no-color", options.noColor,
                   "Never use colours (as with the variable NO_COLOR)");
  command.add_option("--timeout", options.timeoutSeconds, "How long to wait, in seconds")
      ->check(CLI::Range(shortestTimeout, longestTimeout).description(""))
      ->check(isNumber)
      ->type_name("SECONDS")
      ->capture_default_str();
}

void addTargetOptions(CLI::App& command, CommandOptions& options) {
  constexpr int highestPort = 65'535;
  CLI::Option* port =
      command.add_option("--port", options.port, "Connect to this port, without looking for it")
          ->check(CLI::Range(1, highestPort).description(""))
          ->type_name("PORT");
  command.add_option("--host", options.host, "Where the port is, such as the end of an SSH tunnel")
      ->needs(port)
      ->transform(CLI::Validator(withoutBrackets, ""))
      ->type_name("ADDRESS")
      ->capture_default_str();
  command.add_option("--pid", options.pid, "Choose the application by its process id")
      ->check(CLI::Range(1, std::numeric_limits<pid_t>::max()).description(""))
      ->type_name("PID")
      ->excludes(port);
  command.add_option("--name", options.name, "Choose the application by its name, or part of it")
      ->type_name("NAME")
      ->excludes(port);
}

CLI::App* addHostCommand(CLI::App& parent, const std::string& name, const std::string& description,
                         CommandOptions& options) {
  CLI::App* command = parent.add_subcommand(name, description);
  addTargetOptions(*command, options);
  addOutputOptions(*command, options);
  return command;
}

}  // namespace tarnix::companion
