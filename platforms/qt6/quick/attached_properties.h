#pragma once

#include <QAccessible>
#include <QString>
#include <optional>

class QQuickItem;

namespace tarnix::qt6 {

/// What an application says of an item beside the item itself: its attached accessible properties
/// and tool tip, where they exist. Looking makes none. Main thread.
struct AttachedProperties {
  explicit AttachedProperties(const QQuickItem& item);

  QString name;
  /// Absent unless the application gave the item one.
  std::optional<QAccessible::Role> role;
  bool isIgnored = false;
  bool isCheckable = false;
  bool isChecked = false;
  bool isSearchEdit = false;
  bool isPasswordEdit = false;
  bool isSelected = false;
  QString toolTip;
  /// Of an item on a path: whether it is shown.
  bool isOnPath = true;
};

}  // namespace tarnix::qt6
