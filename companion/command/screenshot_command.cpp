#include <fmt/format.h>
#include <unistd.h>

#include <optional>
#include <variant>

#include "companion/command/command_records.h"
#include "companion/command/host_answer.h"
#include "companion/command/output_file.h"
#include "companion/command/screen_commands.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "companion/output/terminal_picture.h"
#include "probe/link/json_codec.h"
#include "probe/model/screenshot_response.h"

namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

/// Where the picture goes.
struct Destination {
  std::string file;
  bool isStandardOutput = false;
  std::optional<PictureProtocol> terminal;
};

std::variant<Destination, ExitCode> destinationOf(const ScreenshotOptions& screenshot,
                                                  const CommandOptions& options) {
  const bool isTerminal = isatty(STDOUT_FILENO) != 0;
  Destination destination;
  if (screenshot.show || (screenshot.file.empty() && isTerminal && !options.json)) {
    destination.terminal = isTerminal ? pictureProtocol() : std::nullopt;
    if (!destination.terminal && (screenshot.show || screenshot.file.empty())) {
      return report(ExitCode::usage,
                    "this terminal is not known to show pictures. Give a FILE for it.", options);
    }
  }
  if (screenshot.file == "-" || (screenshot.file.empty() && !isTerminal && !options.json)) {
    destination.isStandardOutput = true;
  } else {
    destination.file = screenshot.file;
  }
  return destination;
}

ExitCode deliver(const ScreenshotResponse& picture, const Destination& destination,
                 const CommandOptions& options) {
  const std::string& png = picture.base64PNG.data;
  if (destination.terminal) {
    const std::optional<std::string> shown =
        pictureSequence(*destination.terminal, png, pictureRoom());
    const ExitCode code =
        shown ? writeToStandardOutput(*shown + "\n", options)
              : report(ExitCode::notUnderstood, "the picture that came cannot be shown.", options);
    if (code != ExitCode::success || destination.file.empty()) {
      return code;
    }
  }
  if (destination.isStandardOutput) {
    return writeToStandardOutput(png, options);
  }
  const ExitCode code = writeToFile(destination.file, png, options);
  if (code != ExitCode::success) {
    return code;
  }
  if (options.json) {
    const std::optional<std::string> written =
        encodeJson(PictureWritten{picture.screen, destination.file});
    return writeToStandardOutput(printableJson(written.value_or("{}")) + "\n", options);
  }
  return writeToStandardOutput(fmt::format("the screen \"{}\" is in {}\n",
                                           printable(picture.screen), printable(destination.file)),
                               options);
}

}  // namespace

ExitCode runScreenshot(const CommandOptions& options, const ScreenshotOptions& screenshot) {
  const std::variant<Destination, ExitCode> destination = destinationOf(screenshot, options);
  if (const ExitCode* code = std::get_if<ExitCode>(&destination)) {
    return *code;
  }
  const auto answer = ask<ScreenshotResponse>(makeCommand(Type::commandRequestScreenshot),
                                              Type::responseScreenshot, options);
  if (const ExitCode* code = std::get_if<ExitCode>(&answer)) {
    return *code;
  }
  const auto& [picture, payload] = std::get<0>(answer);
  if (options.json && screenshot.file.empty()) {
    return writeToStandardOutput(printableJson(payload) + "\n", options);
  }
  return deliver(picture, std::get<Destination>(destination), options);
}

}  // namespace tarnix::companion
