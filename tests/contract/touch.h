#pragma once

#include <string>

#include "probe/platform/responder.h"
#include "tests/contract/screen_walk.h"

namespace tarnix::contract {

/// What a view is called here: as its author named it, else by its class.
inline std::string nameOf(const platform::View& view) {
  return view.accessibilityIdentifier().value_or(view.className());
}

/// The name of the view that a touch at `point` of the key window reaches; "-" for none.
inline std::string touchedAt(const platform::Application& application, platform::Point point) {
  const auto window = keyWindowOf(application);
  const auto view = window == nullptr ? nullptr : window->hitTest(point);
  return view == nullptr ? "-" : nameOf(*view);
}

/// Taps there, and says which view was said to react, by what `name` calls it: "-" when none was.
inline std::string tapAt(const platform::Application& application, platform::Point point,
                         std::string (*nameOf)(const platform::View&) = contract::nameOf) {
  const auto window = keyWindowOf(application);
  for (auto view = window == nullptr ? nullptr : window->hitTest(point); view != nullptr;
       view = view->superview()) {
    const auto responder = view->responder();
    if (responder == nullptr) {
      continue;
    }
    const std::string name = nameOf(*view);
    if (platform::Control* const control = responder->asControl()) {
      control->sendTouchUpInside();
      return name;
    }
    for (const auto& recognizer : responder->gestureRecognizers()) {
      if (recognizer->isTap()) {
        recognizer->setEnded();
        return name;
      }
    }
  }
  return "-";
}

/// Scrolls the innermost view that scrolls under `from` as a swipe does. False where there is none.
inline bool swipeAt(const platform::Application& application, platform::Point from,
                    platform::Point to) {
  const auto window = keyWindowOf(application);
  for (auto view = window == nullptr ? nullptr : window->hitTest(from); view != nullptr;
       view = view->superview()) {
    const auto responder = view->responder();
    if (platform::ScrollView* const scroller = responder ? responder->asScrollView() : nullptr) {
      const platform::Point offset = scroller->contentOffset();
      scroller->setContentOffsetAnimated({offset.x + from.x - to.x, offset.y + from.y - to.y});
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::contract
