#include "probe/inspect/probe_input_synthesizer.h"

#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "probe/inspect/key_window.h"
#include "probe/inspect/probe_accessibility_scanner.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/text.h"

namespace tarnix::ProbeInputSynthesizer {
namespace {

using platform::Point;
using platform::Responder;
using platform::View;

constexpr const char* noKeyWindow = "No key window found";

InputResult failure(std::string message) { return {false, std::move(message)}; }

std::string pairOf(std::int64_t x, std::int64_t y) {
  return '(' + std::to_string(x) + ',' + std::to_string(y) + ')';
}

Point pointAt(std::int64_t x, std::int64_t y) {
  return {static_cast<double>(x), static_cast<double>(y)};
}

std::string nameOf(const View& view) {
  return view.hasAccessibilityLabel() ? view.accessibilityLabel() : view.className();
}

/// Numbers that a companion sends may lie anywhere; the host must outlive them.
std::int64_t saturatingDifference(std::int64_t left, std::int64_t right) {
  std::int64_t result = 0;
  if (__builtin_sub_overflow(left, right, &result)) {
    return left < right ? std::numeric_limits<std::int64_t>::min()
                        : std::numeric_limits<std::int64_t>::max();
  }
  return result;
}

/// Says what is about to happen, then lets it happen.
template <class Action>
InputResult act(std::string message, const WillAct& willAct, const Action& action) {
  InputResult result{true, std::move(message)};
  if (willAct) {
    willAct(result);
  }
  action();
  return result;
}

std::shared_ptr<platform::GestureRecognizer> tapRecognizerOf(Responder& responder) {
  for (auto& recognizer : responder.gestureRecognizers()) {
    if (recognizer->isTap()) {
      return std::move(recognizer);
    }
  }
  return nullptr;
}

/// From `view` outwards. Bounded, since a host's views may name each other as their superviews.
template <class Visit>
void walkUp(std::shared_ptr<View> view, const Visit& visit) {
  for (std::size_t steps = 0; view && steps < ProbeAccessibilityScanner::maximumDepth; ++steps) {
    const std::shared_ptr<Responder> responder = view->responder();
    if (responder && visit(*view, responder)) {
      return;
    }
    view = view->superview();
  }
}

}  // namespace

std::shared_ptr<platform::Window> appWindow() { return keyWindow(); }

std::shared_ptr<View> findFirstResponder(std::shared_ptr<View> view) {
  struct Level {
    std::vector<std::shared_ptr<View>> views;
    std::size_t next = 0;
  };
  std::vector<Level> path;
  path.push_back({{std::move(view)}});
  std::size_t visits = 0;
  while (!path.empty()) {
    Level& level = path.back();
    if (level.next == level.views.size()) {
      path.pop_back();
      continue;
    }
    std::shared_ptr<View> candidate = std::move(level.views[level.next++]);
    if (!candidate || ++visits > ProbeAccessibilityScanner::maximumVisits) {
      continue;
    }
    if (candidate->isFirstResponder()) {
      return candidate;
    }
    if (path.size() < ProbeAccessibilityScanner::maximumDepth) {
      path.push_back({candidate->subviews()});
    }
  }
  return nullptr;
}

InputResult tap(std::int64_t x, std::int64_t y, const WillAct& willAct) {
  platform::assertMainThread();
  const std::shared_ptr<platform::Window> window = appWindow();
  if (!window) {
    return failure(noKeyWindow);
  }
  const std::shared_ptr<View> hit = window->hitTest(pointAt(x, y));
  if (!hit) {
    return failure("No view at " + pairOf(x, y));
  }
  // Asked for before: what is tapped may take its view away.
  const std::string name = nameOf(*hit);
  if (const auto responder = hit->responder(); responder && responder->accessibilityActivate()) {
    return {true, "Tapped via accessibility: " + name};
  }
  InputResult result = failure("No tappable element at " + pairOf(x, y));
  walkUp(hit, [&](const View& view, const std::shared_ptr<Responder>& responder) {
    if (platform::Control* const control = responder->asControl()) {
      result =
          act("Tapped control: " + nameOf(view), willAct, [&] { control->sendTouchUpInside(); });
    } else if (const auto recognizer = tapRecognizerOf(*responder)) {
      result = act("Triggered tap gesture on: " + nameOf(view), willAct,
                   [&] { recognizer->setEnded(); });
    }
    return result.success;
  });
  return result;
}

InputResult swipe(std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2, double,
                  const WillAct& willAct) {
  platform::assertMainThread();
  const std::shared_ptr<platform::Window> window = appWindow();
  if (!window) {
    return failure(noKeyWindow);
  }
  InputResult result = failure("No scrollable view found at " + pairOf(x1, y1));
  walkUp(window->hitTest(pointAt(x1, y1)),
         [&](const View&, const std::shared_ptr<Responder>& responder) {
           platform::ScrollView* const scrollView = responder->asScrollView();
           if (scrollView == nullptr) {
             return false;
           }
           const std::int64_t dx = saturatingDifference(x1, x2);
           const std::int64_t dy = saturatingDifference(y1, y2);
           result = act("Scrolled by " + pairOf(dx, dy), willAct, [&] {
             const Point offset = scrollView->contentOffset();
             scrollView->setContentOffsetAnimated(
                 {offset.x + static_cast<double>(dx), offset.y + static_cast<double>(dy)});
           });
           return true;
         });
  return result;
}

InputResult typeText(std::string_view text, const WillAct& willAct) {
  platform::assertMainThread();
  const std::shared_ptr<platform::Window> window = appWindow();
  return window ? typeText(text, findFirstResponder(window), willAct) : failure(noKeyWindow);
}

InputResult typeText(std::string_view text, const std::shared_ptr<View>& focused,
                     const WillAct& willAct) {
  const std::shared_ptr<Responder> responder = focused ? focused->responder() : nullptr;
  if (!responder) {
    return failure("No text field is focused");
  }
  const std::string typed =
      "Typed " + std::to_string(platform::characterCount(text)) + " characters";
  if (platform::TextInput* const input = responder->asTextInput()) {
    return act(typed, willAct, [&] { input->insertText(text); });
  }
  if (platform::KeyInput* const input = responder->asKeyInput()) {
    return act(typed + " via UIKeyInput", willAct, [&] {
      for (std::string_view rest = text; !rest.empty();) {
        const std::string_view character = platform::firstCharacters(rest, 1);
        input->insertText(character);
        rest.remove_prefix(character.size());
      }
    });
  }
  return failure("First responder doesn't accept text input");
}

}  // namespace tarnix::ProbeInputSynthesizer
