#include "platforms/qt6/base/contentless_view.h"

#include "platforms/qt6/base/window_responder.h"
#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/frame.h"

namespace tarnix::qt6 {

std::string ContentlessView::className() const {
  return window_ == nullptr ? std::string() : writtenClassName(*window_->metaObject());
}

platform::Rect ContentlessView::accessibilityFrame() const {
  return window_ == nullptr ? platform::Rect() : frameOf(QRectF(origin_, window_->size()));
}

std::shared_ptr<platform::Responder> ContentlessView::responder() const {
  if (window_ == nullptr) {
    return nullptr;
  }
  const QPointF centre(window_->width() / 2.0, window_->height() / 2.0);
  return std::make_shared<WindowResponder>(*window_, touch_.value_or(centre));
}

}  // namespace tarnix::qt6
