#pragma once

#include <QList>
#include <optional>

#include "probe/platform/picture.h"

class QWindow;

namespace tarnix::qt6 {

/// `window` as it was last drawn, with what can be seen of the `popups` in front of it, back to
/// front. Absent when nothing was drawn yet. Main thread.
std::optional<platform::Picture> pictureOf(QWindow& window, const QList<QWindow*>& popups);

}  // namespace tarnix::qt6
