#include <fmt/format.h>

#include <cerrno>
#include <fstream>
#include <system_error>

#include "companion/command/commands.h"
#include "companion/command/host_session.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "probe/model/screen_html_response.h"

namespace tarnix::companion {
namespace {

/// On a terminal the document is shown, elsewhere it is handed on byte for byte.
ExitCode writeDocument(const ScreenHTMLResponse& screen, const CommandOptions& options) {
  const Terminal terminal = Terminal::standardOutput(options.noColor);
  if (!terminal.isTerminal()) {
    return writeToStandardOutput(screen.html, options);
  }
  return writeToStandardOutput(printable(screen.html, KeptControls::lineFeeds) + "\n", options);
}

ExitCode writeFile(const std::string& text, const HtmlOptions& html,
                   const CommandOptions& options) {
  errno = 0;
  std::ofstream stream(html.file, std::ios::binary | std::ios::trunc);
  stream << text;
  stream.close();
  if (stream) {
    return ExitCode::success;
  }
  return report(ExitCode::failure,
                fmt::format("{} cannot be written: {}. Choose another file with -o.", html.file,
                            std::generic_category().message(errno)),
                options);
}

}  // namespace

ExitCode runHtml(const CommandOptions& options, const HtmlOptions& html) {
  const Deadline deadline = deadlineIn(options.timeout());
  std::variant<HostSession, ExitCode> session = openSession(options, deadline);
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  HostSession& host = std::get<HostSession>(session);
  const Outcome<CompanionMessage> answer =
      host.client.request(makeCommand(CompanionMessageType::commandScreenHTML),
                          CompanionMessageType::responseScreenHTML, deadline);
  if (!answer) {
    return report(answer.error(), options);
  }
  const std::optional<ScreenHTMLResponse> screen = answer->decode<ScreenHTMLResponse>();
  if (!screen) {
    return report(ExitCode::notUnderstood,
                  "the answer was not understood. Are `tarnix` and the probe of one version?",
                  options);
  }
  const bool toFile = !html.file.empty() && html.file != "-";
  if (options.json) {
    return toFile ? writeFile(answer->payload + "\n", html, options)
                  : writeToStandardOutput(printableJson(answer->payload) + "\n", options);
  }
  if (!toFile) {
    return writeDocument(*screen, options);
  }
  const ExitCode code = writeFile(screen->html, html, options);
  if (code == ExitCode::success) {
    return writeToStandardOutput(
        fmt::format("{} elements of the screen \"{}\" are in {}\n", screen->elementCount,
                    printable(screen->screen), printable(html.file)),
        options);
  }
  return code;
}

}  // namespace tarnix::companion
