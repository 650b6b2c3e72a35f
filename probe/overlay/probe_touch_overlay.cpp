#include "probe/overlay/probe_touch_overlay.h"

#include <algorithm>
#include <chrono>
#include <vector>

#include "probe/capture/probelog.h"
#include "probe/platform/main_thread.h"

namespace tarnix::ProbeTouchOverlay {

namespace {

using overlay::Property;

constexpr double orbDistanceFromEdge = 60;
constexpr double orbShift = 10;
constexpr std::chrono::seconds orbStays{3};
constexpr double orbFadesFor = 0.4;
constexpr std::chrono::milliseconds hiddenOrbStays{500};
constexpr double hiddenOrbFadesFor = 0.3;

void placeOrb(const platform::OverlaySurface::Place& place) {
  if (ProbeOrbView* const orb = detail::state().orb.get()) {
    orb->setPosition({place.size.width / 2, place.size.height - orbDistanceFromEdge -
                                                place.bottomInset + orb->size().height / 2});
  }
}

std::shared_ptr<platform::WindowScene> sceneToDrawOn() {
  const std::vector<std::shared_ptr<platform::WindowScene>> scenes =
      platform::current().application->connectedScenes();
  const auto active = std::find_if(scenes.begin(), scenes.end(),
                                   [](const std::shared_ptr<platform::WindowScene>& scene) {
                                     return scene->isForegroundActive();
                                   });
  if (active != scenes.end()) {
    return *active;
  }
  return scenes.empty() ? nullptr : scenes.front();
}

void fadeOrbOut(double duration) {
  detail::State& state = detail::state();
  // An orb that can be seen moves, and so the window shows.
  if (state.orb != nullptr && state.window != nullptr && state.window->isShowing()) {
    state.window->animator().animate(
        {.duration = duration},
        {{state.orb, Property::opacity, 0}, {state.orb, Property::translationY, orbShift}});
  }
}

void fadeOrbOutAfter(std::chrono::nanoseconds delay, double duration) {
  detail::state().hideTimer = platform::current().mainQueue->scheduledTimer(delay, [duration] {
    // Once; a timer may end itself.
    const std::unique_ptr<platform::Timer> done = std::move(detail::state().hideTimer);
    fadeOrbOut(duration);
  });
}

std::shared_ptr<ProbeOrbView> makeOrb() {
  auto orb = std::make_shared<ProbeOrbView>(platform::Rect{{0, 0}, ProbeOrbView::orbSize});
  orb->setValue(Property::opacity, 0);
  orb->setValue(Property::scale, 0.8);
  orb->setValue(Property::translationY, orbShift);
  return orb;
}

}  // namespace

namespace detail {

State& state() {
  static State& shared = *new State;
  return shared;
}

PassthroughWindow* overlayWindow() {
  platform::assertMainThread();
  State& state = detail::state();
  if (state.window != nullptr && state.window->windowScene() != nullptr) {
    return state.window.get();
  }
  std::shared_ptr<platform::WindowScene> scene = sceneToDrawOn();
  if (scene == nullptr) {
    probelog("[TarnixProbe] TouchOverlay: no window scene found\n");
    return nullptr;
  }
  state.window = std::make_unique<PassthroughWindow>(std::move(scene), placeOrb);
  probelog("[TarnixProbe] TouchOverlay: overlay window created\n");
  return state.window.get();
}

}  // namespace detail

void showOrb(ProbeToolCategory category, const std::optional<std::string>& detail) {
  PassthroughWindow* const window = detail::overlayWindow();
  overlay::Layer* const root = window == nullptr ? nullptr : window->rootView();
  if (root == nullptr) {
    return;
  }
  detail::State& state = detail::state();
  if (state.orb == nullptr || state.orb->superlayer() != root) {
    state.orb = makeOrb();
    placeOrb(window->place());
    root->add(state.orb);
  }
  state.orb->configure(category, detail);
  window->animator().animate({.duration = 0.2, .curve = overlay::TimingCurve::spring(0.8)},
                             {{state.orb, Property::opacity, 1},
                              {state.orb, Property::scale, 1},
                              {state.orb, Property::translationY, 0}});
  fadeOrbOutAfter(orbStays, orbFadesFor);
}

void hideOrb() {
  platform::assertMainThread();
  fadeOrbOutAfter(hiddenOrbStays, hiddenOrbFadesFor);
}

}  // namespace tarnix::ProbeTouchOverlay
