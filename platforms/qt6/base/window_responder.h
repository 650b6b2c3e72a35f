#pragma once

#include <QPointF>
#include <QPointer>
#include <QWindow>

#include "probe/platform/responder.h"

namespace tarnix::qt6 {

/// A window that its application paints by itself: it takes every touch and key, and who knows what
/// it makes of them. Main thread.
class WindowResponder : public platform::Responder,
                        public platform::Control,
                        public platform::KeyInput {
 public:
  /// Touched at `point`, in the window's own coordinates.
  WindowResponder(QWindow& window, QPointF point) : window_(&window), point_(point) {}

  bool isUserInteractionEnabled() const override;
  bool isFirstResponder() const override { return isUserInteractionEnabled(); }
  bool accessibilityActivate() override { return false; }
  std::vector<std::shared_ptr<platform::GestureRecognizer>> gestureRecognizers() override {
    return {};
  }
  platform::Control* asControl() override { return isUserInteractionEnabled() ? this : nullptr; }
  platform::KeyInput* asKeyInput() override { return isUserInteractionEnabled() ? this : nullptr; }

  void sendTouchUpInside() override;
  void insertText(std::string_view character) override;

 private:
  QPointer<QWindow> window_;
  QPointF point_;
};

}  // namespace tarnix::qt6
