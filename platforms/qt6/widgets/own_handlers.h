#pragma once

class QGraphicsItem;
class QGraphicsScene;
class QWidget;

/// What an application's own widget classes do that their metadata does not tell. Main thread.
namespace tarnix::qt6 {

/// Whether the widget's class takes presses of the mouse in code that is not the toolkit's.
bool hasOwnPressHandler(const QWidget& widget);

/// The same of a figure in a scene, and of a scene, which may take what its figures do not.
bool hasOwnPressHandler(const QGraphicsItem& figure);
bool hasOwnPressHandler(const QGraphicsScene& scene);

/// The same of keys.
bool hasOwnKeyHandler(const QWidget& widget);

}  // namespace tarnix::qt6
