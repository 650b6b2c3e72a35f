#include "platforms/qt6/base/contentless_view.h"

#include "platforms/qt6/shared/class_name.h"
#include "platforms/qt6/shared/frame.h"

namespace tarnix::qt6 {

std::string ContentlessView::className() const {
  return window_ == nullptr ? std::string() : writtenClassName(*window_->metaObject());
}

platform::Rect ContentlessView::accessibilityFrame() const {
  return window_ == nullptr ? platform::Rect() : frameOf(QRectF(origin_, window_->size()));
}

}  // namespace tarnix::qt6
