#include "companion/command/input_commands.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <system_error>
#include <variant>
#include <vector>

#include "companion/command/command_records.h"
#include "companion/command/host_session.h"
#include "companion/command/standard_output.h"
#include "companion/command/step_file.h"
#include "companion/command/step_runner.h"
#include "companion/output/display_text.h"
#include "probe/link/json_codec.h"

namespace tarnix::companion {
namespace {

std::optional<std::string> contentOf(const std::string& file) {
  if (file == "-") {
    return std::string(std::istreambuf_iterator<char>(std::cin), {});
  }
  // Opens well, and throws once it is read.
  if (std::error_code error; std::filesystem::is_directory(file, error)) {
    errno = EISDIR;
    return std::nullopt;
  }
  std::ifstream stream(file, std::ios::binary);
  std::string content((std::istreambuf_iterator<char>(stream)), {});
  return stream.is_open() && !stream.bad() ? std::optional(std::move(content)) : std::nullopt;
}

ExitCode show(const Step& step, const StepRunner::Result& result, const CommandOptions& options) {
  const bool isDone = result.code == ExitCode::success;
  if (options.json) {
    const std::string line =
        encodeJson(StepDone{describe(step), isDone, result.message}).value_or("{}");
    return writeToStandardOutput(printableJson(line) + "\n", options);
  }
  const Terminal terminal = Terminal::standardOutput(options.noColor);
  return writeToStandardOutput(fmt::format("{} {}: {}\n",
                                           terminal.styled(isDone ? "ok    " : "failed",
                                                           isDone ? Style::quiet : Style::failure),
                                           printable(describe(step)), printable(result.message)),
                               options);
}

}  // namespace

ExitCode runStep(const CommandOptions& options, const Step& step) {
  std::variant<HostSession, ExitCode> session = openSession(options, deadlineIn(options.timeout()));
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  StepRunner runner(std::get<HostSession>(session).client, options);
  const StepRunner::Result result = runner.run(step);
  if (options.json) {
    const ExitCode shown = show(step, result, options);
    return result.code != ExitCode::success ? result.code : shown;
  }
  if (result.code != ExitCode::success) {
    return report(result.code, result.message, options);
  }
  // Nothing is to be told of a wait that is over.
  return std::holds_alternative<WaitStep>(step)
             ? ExitCode::success
             : writeToStandardOutput(printable(result.message) + "\n", options);
}

ExitCode runSteps(const CommandOptions& options, const std::string& file) {
  errno = 0;
  const std::optional<std::string> content = contentOf(file);
  if (!content) {
    return report(
        ExitCode::failure,
        fmt::format("{} cannot be read: {}.", file, std::generic_category().message(errno)),
        options);
  }
  const std::variant<std::vector<Step>, std::string> steps = stepsIn(*content);
  if (const std::string* const reason = std::get_if<std::string>(&steps)) {
    return report(ExitCode::usage, fmt::format("{}: {}.", file, *reason), options);
  }
  std::variant<HostSession, ExitCode> session = openSession(options, deadlineIn(options.timeout()));
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  StepRunner runner(std::get<HostSession>(session).client, options);
  for (const Step& step : std::get<std::vector<Step>>(steps)) {
    const StepRunner::Result result = runner.run(step);
    if (std::holds_alternative<WaitStep>(step)) {
      runner.showVerdict(step, result);
    }
    const ExitCode shown = show(step, result, options);
    if (result.code != ExitCode::success || shown != ExitCode::success) {
      return result.code != ExitCode::success ? result.code : shown;
    }
  }
  return ExitCode::success;
}

}  // namespace tarnix::companion
