#pragma once

#include <QPointF>
#include <QPointer>
#include <QQuickItem>

namespace tarnix::qt6 {

/// What a press at a point of a scene meets.
struct Press {
  enum class Effect {
    none,
    /// The item reacts by itself.
    control,
    /// A tap handler of the item does.
    tapHandler,
  };

  /// The item that reacts; where none does, the one in front. Null where there is none.
  QPointer<QQuickItem> item;
  Effect effect = Effect::none;
};

/// Looks for it in the order in which the toolkit hands a press over. Main thread.
Press pressAt(QQuickItem& root, QPointF scenePoint);

/// What a press at `point`, in its own coordinates, does to this item alone.
Press::Effect effectOfPress(QQuickItem& item, QPointF point);

}  // namespace tarnix::qt6
