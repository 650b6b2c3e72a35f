#include "platforms/qt6/quick/item_responder.h"

#include <QQuickRenderControl>
#include <QQuickWindow>

#include "platforms/qt6/quick/item_keys.h"
#include "platforms/qt6/quick/item_scrolling.h"
#include "platforms/qt6/quick/path_scrolling.h"
#include "platforms/qt6/quick/web_scrolling.h"
#include "platforms/qt6/shared/finger.h"
#include "platforms/qt6/shared/keyboard.h"
#include "platforms/qt6/shared/modality.h"

namespace tarnix::qt6 {

namespace {

/// The window on the screen that an item is seen in, and where its scene stands in it: a scene
/// inside a widget has a window that is never shown.
struct ShownWindow {
  explicit ShownWindow(const QQuickItem* item) {
    QQuickWindow* const scene = item == nullptr ? nullptr : item->window();
    if (scene != nullptr) {
      window = QQuickRenderControl::renderWindowFor(scene, &offset);
      if (window == nullptr) {
        window = scene;
      }
    }
  }

  QWindow* window = nullptr;
  QPoint offset;
};

class TapRecognizer : public platform::GestureRecognizer {
 public:
  TapRecognizer(QQuickItem& item, QPointF scenePoint) : item_(&item), scenePoint_(scenePoint) {}

  bool isTap() const override { return true; }
  void setEnded() override {
    const ShownWindow shown(item_);
    if (shown.window != nullptr) {
      finger::tap(*shown.window, scenePoint_ + shown.offset);
    }
  }

 private:
  QPointer<QQuickItem> item_;
  QPointF scenePoint_;
};

}  // namespace

ItemResponder::ItemResponder(QQuickItem& item, QPointF scenePoint,
                             std::optional<Press::Effect> effect)
    : item_(&item), scenePoint_(scenePoint), effect_(effect) {
  text_.item = &item;
  keys_.item = &item;
}

Press::Effect ItemResponder::effect() const {
  if (!isUserInteractionEnabled()) {
    return Press::Effect::none;
  }
  return effect_ ? *effect_ : effectOfPress(*item_, item_->mapFromScene(scenePoint_));
}

bool ItemResponder::isUserInteractionEnabled() const {
  const ShownWindow shown(item_);
  return shown.window != nullptr && item_->isEnabled() && !isBlockedByModal(*shown.window);
}

bool ItemResponder::isFirstResponder() const { return item_ != nullptr && hasKeyFocus(*item_); }

std::vector<std::shared_ptr<platform::GestureRecognizer>> ItemResponder::gestureRecognizers() {
  if (effect() != Press::Effect::tapHandler) {
    return {};
  }
  return {std::make_shared<TapRecognizer>(*item_, scenePoint_)};
}

platform::Control* ItemResponder::asControl() {
  return effect() == Press::Effect::control ? this : nullptr;
}

platform::ScrollView* ItemResponder::asScrollView() {
  return isUserInteractionEnabled() &&
                 (item_scrolling::canScroll(*item_) || path_scrolling::canScroll(*item_) ||
                  web_scrolling::isPage(*item_))
             ? this
             : nullptr;
}

platform::TextInput* ItemResponder::asTextInput() {
  return isUserInteractionEnabled() && keyboard::editsText(*item_) ? &text_ : nullptr;
}

platform::KeyInput* ItemResponder::asKeyInput() {
  return isUserInteractionEnabled() && takesKeys(*item_) ? &keys_ : nullptr;
}

void ItemResponder::sendTouchUpInside() {
  const ShownWindow shown(item_);
  if (shown.window != nullptr) {
    finger::tap(*shown.window, scenePoint_ + shown.offset);
  }
}

platform::Point ItemResponder::contentOffset() const {
  // What lays its items along a path, like a page, says that it stands nowhere.
  const QPointF offset = item_ == nullptr || path_scrolling::canScroll(*item_)
                             ? QPointF()
                             : item_scrolling::offset(*item_);
  return {offset.x(), offset.y()};
}

void ItemResponder::setContentOffsetAnimated(platform::Point offset) {
  if (item_ == nullptr) {
    return;
  }
  if (path_scrolling::canScroll(*item_)) {
    path_scrolling::scrollBy(*item_, item_->mapFromScene(scenePoint_), {offset.x, offset.y});
    return;
  }
  if (!web_scrolling::isPage(*item_)) {
    item_scrolling::scrollTo(*item_, {offset.x, offset.y});
    return;
  }
  const ShownWindow shown(item_);
  if (shown.window != nullptr) {
    web_scrolling::scrollBy(*shown.window, scenePoint_ + shown.offset, {offset.x, offset.y});
  }
}

void ItemResponder::Text::insertText(std::string_view text) {
  if (item != nullptr && !text.empty()) {
    keyboard::commit(*item, text);
  }
}

void ItemResponder::Keys::insertText(std::string_view character) {
  const ShownWindow shown(item);
  if (shown.window != nullptr) {
    keyboard::typeCharacter(*shown.window, character);
  }
}

}  // namespace tarnix::qt6
