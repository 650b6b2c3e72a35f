#pragma once

class QWindow;

namespace tarnix::qt6 {

/// Whether a modal window in front keeps a person's touch and keys from this one. Main thread.
bool isBlockedByModal(const QWindow& window);

}  // namespace tarnix::qt6
