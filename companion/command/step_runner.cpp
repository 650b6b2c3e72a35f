#include "companion/command/step_runner.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <string_view>
#include <thread>
#include <utility>

#include "companion/command/host_session.h"
#include "companion/command/screen_elements.h"
#include "probe/model/input_result.h"
#include "probe/model/overlay_command.h"
#include "probe/model/screen_html_response.h"
#include "probe/model/swipe_command.h"
#include "probe/model/tap_command.h"
#include "probe/model/type_text_command.h"

namespace tarnix::companion {
namespace {

using namespace std::chrono_literals;
using Result = StepRunner::Result;

/// Often enough for a person.
constexpr auto shortestPause = 100ms;
/// Each look is shown over the host for close to a second: seldom enough for that to end in
/// between.
constexpr auto longestPause = 1'000ms;

/// Until the next look at a screen that was waited for so long: what comes late need not be seen at
/// once.
std::chrono::steady_clock::duration pauseAfter(std::chrono::steady_clock::duration waited) {
  return std::clamp<std::chrono::steady_clock::duration>(waited / 4, shortestPause, longestPause);
}

/// How a probe begins that has nothing at a point, and knows no next step.
constexpr std::string_view noView = "No view at ";

constexpr const char* otherVersion =
    "the answer was not understood. Are `tarnix` and the probe of one version?";

Result failed(const ClientError& error) { return {exitCodeOf(error), error.message}; }

/// The screen, or why it cannot be read.
std::variant<ScreenHTMLResponse, Result> screenOf(CompanionClient& client, Deadline deadline) {
  const Outcome<CompanionMessage> answer =
      client.request(makeCommand(CompanionMessageType::commandScreenHTML),
                     CompanionMessageType::responseScreenHTML, deadline);
  if (!answer) {
    return failed(answer.error());
  }
  std::optional<ScreenHTMLResponse> screen = answer->decode<ScreenHTMLResponse>();
  if (!screen) {
    return Result{ExitCode::notUnderstood, otherVersion};
  }
  return *std::move(screen);
}

/// Says that what was reached where an element is has another name: the view that holds it, as a
/// text does its links, or what lies there in its stead. What is scrolled out of its area is listed
/// where it would be, all the same.
std::string withWhatWasReached(std::string message, const std::string& label,
                               const std::vector<ScreenElement>& elements) {
  const std::size_t colon = message.find(": ");
  const std::string reached = colon == std::string::npos ? label : message.substr(colon + 2);
  const auto isReached = [&](const ScreenElement& element) { return element.label == reached; };
  if (reached != label && std::any_of(elements.begin(), elements.end(), isReached)) {
    message += fmt::format(", at the place of \"{}\"", label);
  }
  return message;
}

/// What of `step` does not hold; empty when all does.
std::string missing(const WaitStep& step, const ScreenHTMLResponse& screen) {
  const std::vector<ScreenElement> elements = elementsIn(screen.html);
  if (step.text && !showsText(elements, *step.text)) {
    return fmt::format("\"{}\" did not come", *step.text);
  }
  if (step.gone && showsText(elements, *step.gone)) {
    return fmt::format("\"{}\" did not go", *step.gone);
  }
  if (step.screen && screen.screen != *step.screen) {
    return fmt::format("the screen \"{}\" did not come, it is \"{}\"", *step.screen, screen.screen);
  }
  return {};
}

}  // namespace

Result StepRunner::run(const Step& step) {
  return std::visit(
      [this](const auto& what) -> Result {
        using What = std::decay_t<decltype(what)>;
        if constexpr (std::is_same_v<What, TapStep>) {
          return tap(what);
        } else if constexpr (std::is_same_v<What, SwipeStep>) {
          return swipe(what);
        } else if constexpr (std::is_same_v<What, TypeStep>) {
          return type(what);
        } else if constexpr (std::is_same_v<What, WaitStep>) {
          return wait(what);
        } else {
          return pause(what);
        }
      },
      step);
}

void StepRunner::showVerdict(const Step& step, const Result& result) {
  const std::optional<CompanionMessage> message =
      CompanionMessage::make(CompanionMessageType::commandShowOverlay,
                             OverlayCommand{.category = "verify",
                                            .detail = describe(step),
                                            .passed = result.code == ExitCode::success},
                             Timestamp::from(std::chrono::system_clock::now()));
  if (message) {
    static_cast<void>(client_.send(*message, deadline()));
  }
}

template <class Command>
Result StepRunner::act(CompanionMessageType type, const Command& command,
                       CompanionMessageType answerType) {
  const Deadline until = deadline();
  if (!isSettled_) {
    // A question may be asked twice, a tap may not.
    const Outcome<CompanionMessage> settled =
        client_.request(makeCommand(CompanionMessageType::commandPerfSnapshot),
                        CompanionMessageType::responsePerfSnapshot, until);
    if (!settled) {
      return failed(settled.error());
    }
    isSettled_ = true;
  }
  std::optional<CompanionMessage> message =
      CompanionMessage::make(type, command, Timestamp::from(std::chrono::system_clock::now()));
  if (!message) {
    return {ExitCode::usage, "that is no text that can be sent. Is it UTF-8?"};
  }
  const Outcome<CompanionMessage> answer =
      client_.request(*message, answerType, until, Repetition::forbidden);
  if (!answer) {
    return failed(answer.error());
  }
  std::optional<InputResult> result = answer->decode<InputResult>();
  if (!result) {
    return {ExitCode::notUnderstood, otherVersion};
  }
  return {result->success ? ExitCode::success : ExitCode::negative, std::move(result->message)};
}

Result StepRunner::tap(const TapStep& step) {
  if (!step.label) {
    return tapAt({step.x, step.y});
  }
  const auto screen = screenOf(client_, deadline());
  if (const Result* const failure = std::get_if<Result>(&screen)) {
    return *failure;
  }
  isSettled_ = true;
  const std::vector<ScreenElement> elements = elementsIn(std::get<ScreenHTMLResponse>(screen).html);
  const auto found = elementLabelled(elements, *step.label);
  if (const std::string* const reason = std::get_if<std::string>(&found)) {
    return {ExitCode::negative, *reason};
  }
  const ScreenElement& element = std::get<ScreenElement>(found);
  Result result = tapAt({element.x, element.y});
  result.message = withWhatWasReached(std::move(result.message), element.label, elements);
  return result;
}

Result StepRunner::tapAt(const TapCommand& command) {
  Result result = act(CompanionMessageType::commandTap, command, CompanionMessageType::responseTap);
  if (result.code == ExitCode::negative && result.message.starts_with(noView)) {
    result.message += ". `tarnix html` shows what there is, and where.";
  }
  return result;
}

Result StepRunner::swipe(const SwipeStep& step) {
  return act(CompanionMessageType::commandSwipe,
             SwipeCommand{step.x1, step.y1, step.x2, step.y2, std::nullopt},
             CompanionMessageType::responseSwipe);
}

Result StepRunner::type(const TypeStep& step) {
  return act(CompanionMessageType::commandTypeText, TypeTextCommand{step.text},
             CompanionMessageType::responseTypeText);
}

Result StepRunner::wait(const WaitStep& step) {
  const auto patience =
      step.within ? std::chrono::duration_cast<std::chrono::steady_clock::duration>(*step.within)
                  : options_.timeout();
  const auto begin = std::chrono::steady_clock::now();
  const Deadline until = deadlineIn(patience);
  while (true) {
    const auto screen = screenOf(client_, until);
    if (const Result* const failure = std::get_if<Result>(&screen)) {
      return *failure;
    }
    isSettled_ = true;
    const std::string reason = missing(step, std::get<ScreenHTMLResponse>(screen));
    if (reason.empty()) {
      return {ExitCode::success, "it is so"};
    }
    const auto now = std::chrono::steady_clock::now();
    // The last look is at the end.
    const auto pause = std::min(pauseAfter(now - begin), until - now - shortestPause);
    if (pause <= pause.zero()) {
      return {ExitCode::negative, fmt::format("{} within {:.3g} s", reason,
                                              std::chrono::duration<double>(patience).count())};
    }
    std::this_thread::sleep_for(pause);
  }
}

Result StepRunner::pause(const PauseStep& step) {
  std::this_thread::sleep_for(step.duration);
  return {ExitCode::success, "done"};
}

}  // namespace tarnix::companion
