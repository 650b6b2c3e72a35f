#pragma once

#include <QPointer>
#include <QWidget>
#include <optional>

#include "platforms/qt6/widgets/widget_class.h"
#include "probe/platform/responder.h"

namespace tarnix::qt6 {

/// What a widget does with touch and keys. Main thread.
class WidgetResponder : public platform::Responder,
                        public platform::Control,
                        public platform::ScrollView {
 public:
  /// Touched at `point`, in the widget's own coordinates. `reacts` tells whether this is the widget
  /// that such a touch makes react; absent where only this widget is asked about.
  WidgetResponder(QWidget& widget, WidgetKind kind, QPoint point, std::optional<bool> reacts);
  /// The same for a widget in a scene that `shownBy` shows, where the point is `pointThere`.
  WidgetResponder(QWidget& widget, WidgetKind kind, QPoint point, std::optional<bool> reacts,
                  QWidget& shownBy, QPoint pointThere);

  bool isUserInteractionEnabled() const override;
  bool isFirstResponder() const override;
  /// Assistive technology presses what it names, not what stands at a point: a press does better.
  bool accessibilityActivate() override { return false; }
  std::vector<std::shared_ptr<platform::GestureRecognizer>> gestureRecognizers() override {
    return {};
  }
  platform::Control* asControl() override;
  platform::ScrollView* asScrollView() override;
  platform::TextInput* asTextInput() override;
  platform::KeyInput* asKeyInput() override;

  void sendTouchUpInside() override;
  platform::Point contentOffset() const override;
  void setContentOffsetAnimated(platform::Point offset) override;

 private:
  struct Text : platform::TextInput {
    void insertText(std::string_view text) override;
    QPointer<QWidget> widget;
  };
  struct Keys : platform::KeyInput {
    void insertText(std::string_view character) override;
    QPointer<QWidget> widget;
  };

  QPointer<QWidget> widget_;
  WidgetKind kind_;
  QPoint point_;
  // What has a window on the screen: the widget itself, or what shows the scene that it stands in.
  QPointer<QWidget> shownBy_;
  QPoint pointThere_;
  std::optional<bool> reacts_;
  Text text_;
  Keys keys_;
};

}  // namespace tarnix::qt6
