#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tarnix::companion {

/// What several commands understand. Each command offers those that mean something to it.
struct CommandOptions {
  std::optional<std::uint16_t> port;
  std::string host = "127.0.0.1";
  std::optional<pid_t> pid;
  std::optional<std::string> name;
  bool json = false;
  bool noColor = false;
  double timeoutSeconds = 10;

  std::chrono::steady_clock::duration timeout() const {
    return std::chrono::duration_cast<std::chrono::steady_clock::duration>(
        std::chrono::duration<double>(timeoutSeconds));
  }
};

/// --json, --no-color and --timeout.
void addOutputOptions(CLI::App& command, CommandOptions& options);

/// --port, --host, --pid and --name.
void addTargetOptions(CLI::App& command, CommandOptions& options);

/// A command about one application, with both kinds of options.
CLI::App* addHostCommand(CLI::App& parent, const std::string& name, const std::string& description,
                         CommandOptions& options);

}  // namespace tarnix::companion
