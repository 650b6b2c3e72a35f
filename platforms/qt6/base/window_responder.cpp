#include "platforms/qt6/base/window_responder.h"

#include "platforms/qt6/shared/finger.h"
#include "platforms/qt6/shared/keyboard.h"
#include "platforms/qt6/shared/modality.h"

namespace tarnix::qt6 {

bool WindowResponder::isUserInteractionEnabled() const {
  // A class of the application's own: the toolkit's plain window does nothing with a touch.
  return window_ != nullptr && window_->metaObject() != &QWindow::staticMetaObject &&
         !isBlockedByModal(*window_);
}

void WindowResponder::sendTouchUpInside() {
  if (window_ != nullptr) {
    finger::tap(*window_, point_);
  }
}

void WindowResponder::insertText(std::string_view character) {
  if (window_ != nullptr) {
    keyboard::typeCharacter(*window_, character);
  }
}

}  // namespace tarnix::qt6
