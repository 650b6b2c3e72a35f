#pragma once

#include <QPointF>
#include <functional>
#include <optional>

class QObject;

/// Scrolling at the pace of a finger. Main thread.
namespace tarnix::qt6::offset_animation {

/// Moves from `from` to `to`, in place of what moves `object` already. `apply` is called with each
/// place on the way and at last with `to`, and `finished` after that; neither once the object has
/// gone.
void start(QObject& object, QPointF from, QPointF to, std::function<void(QPointF)> apply,
           std::function<void()> finished);

/// Where `object` is on its way to; absent when it rests.
std::optional<QPointF> target(const QObject& object);

}  // namespace tarnix::qt6::offset_animation
