#pragma once

#include "platforms/qt6/shared/user_interface_part.h"
#include "platforms/qt6/widgets/widget_screens.h"

class QWidget;

namespace tarnix::qt6 {

/// Windows that hold a widget.
class WidgetsPart : public UserInterfacePart {
 public:
  /// Made once a process; `source` lives as long.
  explicit WidgetsPart(ViewSource& source);

  std::shared_ptr<platform::View> viewOf(QWindow& window,
                                         const Surroundings& surroundings) override;
  ScreenFinder& screens() override { return screens_; }

  /// The widget that a window holds; null when it holds none.
  static QWidget* widgetOf(const QWindow& window);
  QImage lastImage(QWindow& window) override;
  std::shared_ptr<platform::View> touchedView(QWindow& window, const Surroundings& surroundings,
                                              QPointF point,
                                              std::shared_ptr<platform::View> outer) override;
  std::unique_ptr<OverlayPane> makeOverlayPane(QWindow& window) override;

 private:
  ViewSource& source_;
  WidgetScreens screens_;
};

}  // namespace tarnix::qt6
