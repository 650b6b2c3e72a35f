#include "probe/commands/input_commands.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "probe/commands/send_response.h"
#include "probe/inspect/probe_input_synthesizer.h"
#include "probe/model/swipe_command.h"
#include "probe/model/tap_command.h"
#include "probe/model/type_text_command.h"
#include "probe/overlay/probe_touch_overlay.h"
#include "probe/platform/platform.h"

namespace tarnix::ProbeCommandHandler {
namespace {

/// Sends the answer to an input command once: when the host has reacted, or from within the loop
/// that the host's reaction runs. A tap that opens a dialog does not return before somebody closes
/// the dialog, and that may be the companion, which waits for this answer.
class InputAnswer {
 public:
  explicit InputAnswer(CompanionMessageType type) : pending_(std::make_shared<Pending>(type)) {}

  /// The outcome is known; the host is about to react.
  void expect(const InputResult& result) {
    pending_->result = result;
    platform::current().mainQueue->async([pending = pending_] { pending->send(); });
  }

  void finish(InputResult result) {
    pending_->result = std::move(result);
    pending_->send();
  }

 private:
  struct Pending {
    explicit Pending(CompanionMessageType answer) : type(answer) {}

    void send() {
      if (!std::exchange(isSent, true)) {
        sendResponse(type, result);
      }
    }

    CompanionMessageType type;
    InputResult result;
    bool isSent = false;
  };

  std::shared_ptr<Pending> pending_;
};

platform::Point pointOf(std::int64_t x, std::int64_t y) {
  return {static_cast<double>(x), static_cast<double>(y)};
}

/// The middle of what is typed into; absent when nothing has the focus, or the window itself has.
std::optional<platform::Point> centreOf(const std::shared_ptr<platform::View>& focused) {
  if (focused == nullptr || focused->superview() == nullptr) {
    return std::nullopt;
  }
  const platform::Rect frame = focused->wholeFrame();
  return platform::Point{frame.midX(), frame.midY()};
}

template <class Work>
void answer(CompanionMessageType type, const Work& work) {
  InputAnswer answer(type);
  answer.finish(work([&](const InputResult& result) { answer.expect(result); }));
}

}  // namespace

void handleTap(const CompanionMessage& message) {
  const std::optional<TapCommand> command = message.decode<TapCommand>();
  if (!command) {
    return;
  }
  ProbeTouchOverlay::showTap(pointOf(command->x, command->y));
  answer(CompanionMessageType::responseTap, [&](const ProbeInputSynthesizer::WillAct& willAct) {
    return ProbeInputSynthesizer::tap(command->x, command->y, willAct);
  });
}

void handleSwipe(const CompanionMessage& message) {
  const std::optional<SwipeCommand> command = message.decode<SwipeCommand>();
  if (!command) {
    return;
  }
  ProbeTouchOverlay::showSwipe(pointOf(command->x1, command->y1),
                               pointOf(command->x2, command->y2));
  answer(CompanionMessageType::responseSwipe, [&](const ProbeInputSynthesizer::WillAct& willAct) {
    return ProbeInputSynthesizer::swipe(command->x1, command->y1, command->x2, command->y2, 0,
                                        willAct);
  });
}

void handleTypeText(const CompanionMessage& message) {
  const std::optional<TypeTextCommand> command = message.decode<TypeTextCommand>();
  if (!command) {
    return;
  }
  // Searched once: a screen has thousands of views.
  const std::shared_ptr<platform::Window> window = ProbeInputSynthesizer::appWindow();
  const std::shared_ptr<platform::View> focused =
      window == nullptr ? nullptr : ProbeInputSynthesizer::findFirstResponder(window);
  ProbeTouchOverlay::showTypeText(centreOf(focused));
  answer(
      CompanionMessageType::responseTypeText, [&](const ProbeInputSynthesizer::WillAct& willAct) {
        return window == nullptr ? ProbeInputSynthesizer::typeText(command->text, willAct)
                                 : ProbeInputSynthesizer::typeText(command->text, focused, willAct);
      });
}

}  // namespace tarnix::ProbeCommandHandler
