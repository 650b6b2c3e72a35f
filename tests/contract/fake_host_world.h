#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/contract/screen_description.h"
#include "tests/fakes/fake_application.h"
#include "tests/fakes/fake_main_queue.h"
#include "tests/fakes/fake_overlay_surfaces.h"

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
      window->children.push_back(viewOf(thing));
    }
    add(std::move(window), true);
  }

  void showSecondWindow() { add(std::make_shared<fakes::FakeWindow>(), false); }

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
  std::shared_ptr<platform::View> viewOf(const Thing& thing) {
    namespace traits = platform::accessibility_traits;
    auto view = std::make_shared<fakes::FakeView>();
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
                                                        : ViewKind::textField;
    view->reactions.isControl = thing.kind != Thing::Kind::label;
    view->reactions.isUserInteractionEnabled = view->reactions.isControl && !thing.isDisabled;
    if (thing.isDisabled) {
      view->traits |= traits::notEnabled;
    }
    views_.push_back(view);
    return view;
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
};

}  // namespace tarnix::contract
