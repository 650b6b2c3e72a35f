#pragma once

#include "platforms/qt6/shared/user_interface_part.h"

namespace tarnix::qt6 {

/// Windows that hold a Quick scene.
class QuickPart : public UserInterfacePart {
 public:
  static QuickPart& shared();

  std::shared_ptr<platform::View> viewOf(QWindow& window,
                                         const Surroundings& surroundings) override;
  ScreenFinder& screens() override;
  QImage lastImage(QWindow& window) override;
  std::shared_ptr<platform::View> touchedView(QWindow& window, const Surroundings& surroundings,
                                              QPointF point,
                                              std::shared_ptr<platform::View> outer) override;
  std::unique_ptr<OverlayPane> makeOverlayPane(QWindow& window) override;

 private:
  QuickPart() = default;
};

}  // namespace tarnix::qt6
