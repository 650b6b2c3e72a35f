#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/contract/screen_description.h"
#include "tests/fakes/fake_application.h"
#include "tests/fakes/fake_main_queue.h"
#include "tests/fakes/fake_overlay_surfaces.h"
#include "tests/fakes/fake_responder.h"

namespace tarnix::contract {

/// The fakes of what a toolkit brings, seen as every implementation is seen here.
class FakeHostWorld {
 public:
  platform::Application& application() { return application_; }
  platform::MainQueue& mainQueue() { return mainQueue_; }
  platform::OverlaySurfaces& overlaySurfaces() { return overlaySurfaces_; }

  bool pumpUntil(const std::function<bool()>& condition) {
    constexpr int enough = 1000;
    for (int turns = 0; turns < enough && !condition(); ++turns) {
      mainQueue_.runReady();
      mainQueue_.advance(std::chrono::milliseconds(1));
      std::this_thread::yield();
    }
    return condition();
  }

  void letPass(std::chrono::milliseconds duration) { mainQueue_.advance(duration); }

  void show(const ScreenDescription& screen) {
    auto window = std::make_shared<fakes::FakeWindow>();
    window->name = "Window";
    window->frame = {{0, 0}, screen.size};
    overlaySurfaces_.window = {screen.size, 0, {}};
    for (const Thing& thing : screen.things) {
      window->children.push_back(viewOf(thing, window));
    }
    window->atPoint = [window = std::weak_ptr(window)](platform::Point point) {
      return touchedView(window.lock(), point);
    };
    add(std::move(window), true);
  }

  void showSecondWindow() { add(std::make_shared<fakes::FakeWindow>(), false); }

  /// How often the button of that label was clicked.
  std::ptrdiff_t clicks(const std::string& label) const {
    return std::count(clicked_.begin(), clicked_.end(), label);
  }

  void removeAll() {
    for (const std::weak_ptr<fakes::FakeView>& view : views_) {
      if (const auto alive = view.lock()) {
        *alive = fakes::FakeView();
      }
    }
    application_.scenes.clear();
    overlaySurfaces_.window.reset();
  }

 private:
  static bool holds(const platform::Rect& frame, platform::Point point) {
    return point.x >= frame.minX() && point.x < frame.origin.x + frame.size.width &&
           point.y >= frame.minY() && point.y < frame.origin.y + frame.size.height;
  }

  static std::shared_ptr<platform::View> touchedView(
      const std::shared_ptr<fakes::FakeWindow>& window, platform::Point point) {
    if (window == nullptr || !holds(window->frame, point)) {
      return nullptr;
    }
    for (auto child = window->children.rbegin(); child != window->children.rend(); ++child) {
      if (!(*child)->isHidden() && holds((*child)->accessibilityFrame(), point)) {
        return *child;
      }
    }
    return window;
  }

  std::shared_ptr<platform::View> viewOf(const Thing& thing,
                                         const std::shared_ptr<fakes::FakeWindow>& window) {
    namespace traits = platform::accessibility_traits;
    auto view = std::make_shared<fakes::FakeView>();
    view->parent = window;
    view->name = thing.className;
    view->isElement = !thing.isHidden && thing.opacity >= 0.01;
    view->label = thing.label;
    view->frame = thing.frame;
    view->hidden = thing.isHidden;
    view->opacity = thing.opacity;
    view->value = thing.value;
    view->textField = thing.kind == Thing::Kind::field;
    view->traits = thing.kind == Thing::Kind::button  ? traits::button
                   : thing.kind == Thing::Kind::label ? traits::staticText
                                                      : traits::none;
    using platform::ViewKind;
    view->viewKind = thing.kind == Thing::Kind::button  ? ViewKind::button
                     : thing.kind == Thing::Kind::label ? ViewKind::label
                     : thing.kind == Thing::Kind::field ? ViewKind::textField
                                                        : ViewKind::other;
    view->reactions.isControl =
        thing.kind == Thing::Kind::button || thing.kind == Thing::Kind::field;
    view->reactions.isUserInteractionEnabled =
        thing.kind != Thing::Kind::label && !thing.isDisabled;
    view->touch = responderOf(thing, *view);
    if (thing.isDisabled) {
      view->traits |= traits::notEnabled;
    }
    views_.push_back(view);
    return view;
  }

  /// `view` owns it.
  std::shared_ptr<platform::Responder> responderOf(const Thing& thing, fakes::FakeView& view) {
    auto responder = std::make_shared<fakes::FakeResponder>(deeds_);
    responder->interactionEnabled = !thing.isDisabled;
    responder->control = view.reactions.isControl && !thing.isDisabled;
    responder->scrolls = thing.kind == Thing::Kind::scroller && !thing.isDisabled;
    if (thing.kind == Thing::Kind::button) {
      responder->onTouch = [this, label = thing.label] { clicked_.push_back(label); };
    }
    if (thing.kind == Thing::Kind::field && !thing.isDisabled) {
      responder->editsText = true;
      responder->onTouch = [&focused = responder->focused] { focused = true; };
      responder->onText = [&view](std::string_view text) {
        view.value = view.value.value_or("") + std::string(text);
      };
    }
    return responder;
  }

  void add(std::shared_ptr<fakes::FakeWindow> window, bool isKey) {
    window->key = isKey;
    if (application_.scenes.empty()) {
      scene_ = std::make_shared<fakes::FakeWindowScene>();
      application_.scenes.push_back(scene_);
    }
    scene_->windowList.push_back(std::move(window));
  }

  fakes::FakeMainQueue mainQueue_;
  fakes::FakeApplication application_;
  fakes::FakeOverlaySurfaces overlaySurfaces_;
  std::shared_ptr<fakes::FakeWindowScene> scene_;
  std::vector<std::weak_ptr<fakes::FakeView>> views_;
  fakes::Deeds deeds_;
  std::vector<std::string> clicked_;
};

}  // namespace tarnix::contract
