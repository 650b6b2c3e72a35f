#pragma once

#include <memory>
#include <vector>

#include "probe/platform/application.h"
#include "tests/fakes/fake_window.h"

namespace tarnix::fakes {

class FakeWindowScene : public platform::WindowScene {
 public:
  std::vector<std::shared_ptr<platform::Window>> windows() const override { return windowList; }

  bool isForegroundActive() const override { return foregroundActive; }
  bool isConnected() const override { return connected; }

  std::vector<std::shared_ptr<platform::Window>> windowList;
  bool foregroundActive = true;
  bool connected = true;
};

class FakeApplication : public platform::Application {
 public:
  std::vector<std::shared_ptr<platform::WindowScene>> connectedScenes() const override {
    return scenes;
  }

  /// Puts a key window into a scene of its own.
  std::shared_ptr<FakeWindow> addKeyWindow() {
    auto window = std::make_shared<FakeWindow>();
    window->name = "Window";
    window->key = true;
    auto scene = std::make_shared<FakeWindowScene>();
    scene->windowList.push_back(window);
    scenes.push_back(std::move(scene));
    return window;
  }

  std::vector<std::shared_ptr<platform::WindowScene>> scenes;
};

}  // namespace tarnix::fakes
