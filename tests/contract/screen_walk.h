#pragma once

#include <memory>
#include <string>
#include <vector>

#include "probe/platform/application.h"

namespace tarnix::contract {

inline std::vector<std::shared_ptr<platform::Window>> windowsOf(
    const platform::Application& application) {
  std::vector<std::shared_ptr<platform::Window>> result;
  for (const auto& scene : application.connectedScenes()) {
    for (auto& window : scene->windows()) {
      result.push_back(std::move(window));
    }
  }
  return result;
}

/// Null when there is none.
inline std::shared_ptr<platform::Window> keyWindowOf(const platform::Application& application) {
  for (auto& window : windowsOf(application)) {
    if (window->isKeyWindow()) {
      return window;
    }
  }
  return nullptr;
}

/// All views below `view`, parents before children.
inline std::vector<std::shared_ptr<platform::View>> viewsBelow(const platform::View& view) {
  std::vector<std::shared_ptr<platform::View>> result;
  for (const auto& child : view.subviews()) {
    result.push_back(child);
    for (auto& descendant : viewsBelow(*child)) {
      result.push_back(std::move(descendant));
    }
  }
  return result;
}

/// The first view of that label below the key window; null when there is none.
inline std::shared_ptr<platform::View> viewLabelled(const platform::Application& application,
                                                    const std::string& label) {
  if (const auto window = keyWindowOf(application)) {
    for (auto& view : viewsBelow(*window)) {
      if (view->accessibilityLabel() == label) {
        return view;
      }
    }
  }
  return nullptr;
}

}  // namespace tarnix::contract
