#pragma once

#include "platforms/qt6/shared/user_interface_part.h"

namespace tarnix::qt6 {

/// Windows that hold a widget.
class WidgetsPart : public UserInterfacePart {
 public:
  /// Made once a process; `source` lives as long.
  explicit WidgetsPart(ViewSource& source) : source_(source) {}

  std::shared_ptr<platform::View> viewOf(QWindow& window,
                                         const Surroundings& surroundings) override;
  std::unique_ptr<OverlayPane> makeOverlayPane(QWindow& window) override;

 private:
  ViewSource& source_;
};

}  // namespace tarnix::qt6
