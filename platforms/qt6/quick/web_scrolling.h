#pragma once

#include <QPointF>

class QQuickItem;
class QWindow;

/// Web pages, which scroll in a process of their own and tell nobody where they stand. They are
/// moved as a wheel moves them, so that what scrolls under the point is what moves. Main thread.
namespace tarnix::qt6::web_scrolling {

/// Whether `item` is what a web view shows its page with.
bool isPage(const QQuickItem& item);

/// Moves what lies at `point` of `window` by so many pixels of the page, as far as it goes.
void scrollBy(QWindow& window, QPointF point, QPointF distance);

}  // namespace tarnix::qt6::web_scrolling
