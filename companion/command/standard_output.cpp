#include "companion/command/standard_output.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "companion/command/host_session.h"

namespace tarnix::companion {

ExitCode writeToStandardOutput(std::string_view text, const CommandOptions& options) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) {
    return ExitCode::success;
  }
  return report(
      ExitCode::failure,
      fmt::format("standard output cannot be written: {}.", std::generic_category().message(errno)),
      options);
}

}  // namespace tarnix::companion
