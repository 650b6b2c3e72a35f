#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platforms/qt6/shared/user_interface_part.h"

namespace tarnix::qt6 {

/// Brings in the parts for those user interface libraries that the host itself has loaded, and asks
/// them for views. Main thread.
class PartLoader : public ViewSource {
 public:
  static PartLoader& shared();

  /// Before any other call.
  void start(InterposedCalls* calls) { calls_ = calls; }

  /// For tests, which link the parts instead of loading them.
  void add(UserInterfacePart* part);

  /// Looks again when a library was loaded since the last time: QML brings its own along late.
  void update();

  /// Whether the host had loaded the library of scenes when `update` was called last.
  bool hasScenes() const { return quick_.isSettled; }

  std::shared_ptr<platform::View> viewOf(QWindow& window,
                                         const Surroundings& surroundings) override;
  QImage lastImage(QWindow& window) override;
  bool addScreens(QWindow& window, ScreenChain& chain) override;
  std::shared_ptr<platform::View> touchedView(QWindow& window, const Surroundings& surroundings,
                                              QPointF point,
                                              std::shared_ptr<platform::View> outer) override;
  InterposedCalls* interposedCalls() override { return calls_; }
  /// Null when no part knows the window.
  std::unique_ptr<OverlayPane> makeOverlayPane(QWindow& window);

 private:
  PartLoader() = default;
  UserInterfacePart* load(const char* fileName);

  struct Candidate {
    const char* hostLibrary;
    const char* fileName;
    bool isSettled = false;
  };

  Candidate widgets_{"libQt6Widgets.so.6", "libtarnixprobe-qt6-widgets.so"};
  Candidate quick_{"libQt6Quick.so.6", "libtarnixprobe-qt6-quick.so"};
  std::vector<UserInterfacePart*> parts_;
  InterposedCalls* calls_ = nullptr;
  unsigned long long librariesSeen_ = 0;
};

}  // namespace tarnix::qt6
