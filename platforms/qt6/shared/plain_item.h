#pragma once

#include <QRectF>
#include <QString>
#include <optional>
#include <utility>

#include "platforms/qt6/shared/frame.h"
#include "probe/platform/accessibility_item.h"

namespace tarnix::qt6 {

/// A thing on the screen that is no view of its own (a row, a cell, a menu entry), as it was when
/// it was asked for.
class PlainItem : public platform::AccessibilityItem {
 public:
  struct Description {
    QString label;
    QRectF area;
    platform::AccessibilityTraits traits = platform::accessibility_traits::none;
    std::optional<QString> value;
  };

  explicit PlainItem(Description description) : description_(std::move(description)) {}

  bool isAccessibilityElement() const override { return !description_.area.isEmpty(); }
  std::string accessibilityLabel() const override { return description_.label.toStdString(); }
  platform::Rect accessibilityFrame() const override { return frameOf(description_.area); }
  platform::AccessibilityTraits accessibilityTraits() const override { return description_.traits; }
  std::optional<std::string> accessibilityValue() const override {
    return description_.value ? std::optional(description_.value->toStdString()) : std::nullopt;
  }
  std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> accessibilityElements()
      const override {
    return std::nullopt;
  }
  std::optional<std::size_t> accessibilityElementCount() const override { return std::nullopt; }
  std::shared_ptr<AccessibilityItem> accessibilityElement(std::size_t) const override {
    return nullptr;
  }

 private:
  Description description_;
};

}  // namespace tarnix::qt6
