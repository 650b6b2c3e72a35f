#pragma once

#include <QTextBlock>
#include <vector>

#include "platforms/qt6/shared/plain_item.h"

class QTextEdit;

namespace tarnix::qt6 {

/// The links of a laid out document, from the block `first` on, that show in `visible`. `origin` is
/// where the document's top-left corner stands, in the coordinates of `visible` and of what is
/// returned. A link that goes over several lines is where it begins. Main thread.
std::vector<PlainItem::Description> linksIn(const QTextBlock& first, QPointF origin,
                                            const QRectF& visible);

/// The links of a text that can be followed and are in view, in the coordinates of the widget. Main
/// thread.
std::vector<PlainItem::Description> visibleLinks(const QTextEdit& widget);

}  // namespace tarnix::qt6
