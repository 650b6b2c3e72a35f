#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/companion/spawn.h"

namespace tarnix::companion {

struct ProgramResult {
  /// As wait(2) tells it; -1 when the program was not started.
  int waitStatus = -1;
  std::string output;
  std::string errors;

  /// -1 when a signal ended it.
  int exitCode() const;
};

struct ProgramOptions {
  /// Set for the program, besides what this process has.
  Variables environment;
  /// Columns of the terminal that the program writes all its output to; none: it writes to pipes.
  std::optional<unsigned short> terminalColumns;
};

/// Runs a program to its end; what takes longer than a minute is ended by force.
ProgramResult runProgram(const std::vector<std::string>& commandLine,
                         const ProgramOptions& options = {});

}  // namespace tarnix::companion
