#include "probe/inspect/key_window.h"

#include <utility>

#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"

namespace tarnix {

std::shared_ptr<platform::Window> keyWindow() {
  platform::assertMainThread();
  for (const auto& scene : platform::current().application->connectedScenes()) {
    for (auto& window : scene->windows()) {
      if (window->isKeyWindow()) {
        return std::move(window);
      }
    }
  }
  return nullptr;
}

}  // namespace tarnix
