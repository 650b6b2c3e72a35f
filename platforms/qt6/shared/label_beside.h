#pragma once

#include <QRectF>
#include <Qt>

/// Which text a person takes for the name of a field that has none of its own. Any thread.
namespace tarnix::qt6 {

/// How far `text` stands from `field` as its label: in the line before it, else in the line above
/// it. Smaller is nearer; negative when it is no label of it. Both rectangles are in one space, of
/// device-independent pixels.
double distanceOfLabel(const QRectF& text, const QRectF& field, Qt::LayoutDirection direction);

/// No more things than this are looked at around a field: a form has fewer, and a list of thousands
/// must not hold the main thread for each of its fields.
inline constexpr int mostThingsAround = 128;

}  // namespace tarnix::qt6
