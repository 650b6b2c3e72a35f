#pragma once

class QQuickItem;
class QQuickWindow;

/// Where keys go in a scene. Main thread.
namespace tarnix::qt6 {

/// The item that has the focus of its window, also while another application has that of the
/// desktop; null when none has it.
QQuickItem* focusedItem(const QQuickWindow& window);

/// Whether `item` is the one that has it.
bool hasKeyFocus(const QQuickItem& item);

/// Whether a key that is pressed while `item` has the focus is taken by it or an item around it.
bool takesKeys(const QQuickItem& item);

}  // namespace tarnix::qt6
