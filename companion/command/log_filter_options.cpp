#include "companion/command/log_filter_options.h"

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace tarnix::companion {

void addLogFilterOptions(CLI::App& command, LogFilter& filter) {
  command
      .add_option_function<std::string>(
          "--level",
          [&filter](const std::string& name) {
            const std::optional<LogLevel> level = logLevel(name);
            if (!level) {
              throw CLI::ValidationError("--level", "a level is debug, info, warn or error");
            }
            filter.lowest = *level;
          },
          "Of the log only this level and worse: debug, info, warn, error")
      ->type_name("LEVEL");
  command.add_option("--category", filter.category, "Of the log only categories with this in them")
      ->type_name("TEXT");
  command.add_option("--text", filter.text, "Of the log only messages with this in them")
      ->type_name("TEXT");
}

}  // namespace tarnix::companion
