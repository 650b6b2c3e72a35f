#pragma once

#include <QString>

class QObject;
class QWindow;

/// A person's keyboard and input method, as the toolkit sees them. Main thread.
namespace tarnix::qt6::keyboard {

/// Whether `object`, which has the focus or may have it, edits text: not one that only shows it.
bool editsText(QObject& object);

/// Hands `text` to what edits text, as an input method hands over what it has composed.
void commit(QObject& object, const QString& text);

/// Presses and lets go the key of one character, a user-perceived one, in the window.
void typeCharacter(QWindow& window, const QString& character);

}  // namespace tarnix::qt6::keyboard
