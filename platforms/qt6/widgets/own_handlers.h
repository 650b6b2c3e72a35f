#pragma once

class QGraphicsItem;
class QGraphicsScene;
class QWidget;

/// What classes do that nobody but their author knows: those of an application, and those that the
/// toolkit keeps to itself. Main thread.
namespace tarnix::qt6 {

/// Whether the widget's class takes presses of the mouse in code of such an author.
bool hasOwnPressHandler(const QWidget& widget);

/// The same of a figure in a scene, and of a scene, which may take what its figures do not.
bool hasOwnPressHandler(const QGraphicsItem& figure);
bool hasOwnPressHandler(const QGraphicsScene& scene);

/// The same of moves of the mouse. Of the toolkit's, a window inside a window does.
bool hasOwnMoveHandler(const QWidget& widget);

/// The same of keys.
bool hasOwnKeyHandler(const QWidget& widget);
bool hasOwnKeyHandler(const QGraphicsItem& figure);
bool hasOwnKeyHandler(const QGraphicsScene& scene);

}  // namespace tarnix::qt6
