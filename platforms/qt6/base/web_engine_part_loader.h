#pragma once

#include <mutex>

#include "platforms/qt6/shared/web_engine_part.h"
#include "probe/bootstrap/interposed_calls.h"

namespace tarnix::qt6 {

/// Brings in the web engine part once the host itself has the web engine. Any thread.
class WebEnginePartLoader {
 public:
  static WebEnginePartLoader& shared();

  /// Whether the part was built and lies where the others do.
  static bool isPartThere();

  /// Loads the part at once where the host comes with the engine, and waits for it where it does
  /// not. Once, on the loading thread.
  void start(InterposedCalls* calls);

 private:
  WebEnginePartLoader() = default;
  void update() noexcept;
  void load();

  std::mutex lock_;
  WebEnginePartContext context_;
  WebEnginePartEntry entry_ = nullptr;
  bool hasTried_ = false;
};

}  // namespace tarnix::qt6
