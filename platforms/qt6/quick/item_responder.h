#pragma once

#include <QPointer>
#include <QQuickItem>
#include <optional>

#include "platforms/qt6/quick/item_press.h"
#include "probe/platform/responder.h"

namespace tarnix::qt6 {

/// What a Quick item does with touch and keys. Main thread.
class ItemResponder : public platform::Responder,
                      public platform::Control,
                      public platform::ScrollView {
 public:
  /// Touched at `scenePoint`. `effect` tells what such a touch does to this item; absent where only
  /// this item is asked about.
  ItemResponder(QQuickItem& item, QPointF scenePoint, std::optional<Press::Effect> effect);

  bool isUserInteractionEnabled() const override;
  bool isFirstResponder() const override;
  /// Assistive technology presses what it names, not what stands at a point: a press does better.
  bool accessibilityActivate() override { return false; }
  std::vector<std::shared_ptr<platform::GestureRecognizer>> gestureRecognizers() override;
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
    QPointer<QQuickItem> item;
  };
  struct Keys : platform::KeyInput {
    void insertText(std::string_view character) override;
    QPointer<QQuickItem> item;
  };

  Press::Effect effect() const;

  QPointer<QQuickItem> item_;
  QPointF scenePoint_;
  std::optional<Press::Effect> effect_;
  Text text_;
  Keys keys_;
};

}  // namespace tarnix::qt6
