#pragma once

#include <QAccessible>
#include <QString>
#include <optional>

class QQuickItem;

namespace tarnix::qt6 {

/// What an application says of an item beside the item itself: its attached accessible properties
/// and tool tip, where they exist. Looking makes none. Main thread.
class AttachedProperties {
 public:
  explicit AttachedProperties(const QQuickItem& item);

  QString name() const;
  /// Absent unless the application gave the item one.
  std::optional<QAccessible::Role> role() const;
  bool isIgnored() const;
  bool isCheckable() const;
  bool isChecked() const;
  bool isSearchEdit() const;
  bool isPasswordEdit() const;
  bool isSelected() const;
  QString toolTip() const;
  /// Of an item on a path: whether it is shown.
  bool isOnPath() const;
  /// Whether the item has children that are neither these nor items.
  bool areAmongOthers() const { return areAmongOthers_; }

 private:
  // Each null when there is none.
  const QObject* accessible_ = nullptr;
  const QObject* toolTip_ = nullptr;
  const QObject* pathView_ = nullptr;
  bool areAmongOthers_ = false;
};

}  // namespace tarnix::qt6
