#pragma once

#include <string_view>

class QObject;
class QWindow;

/// A person's keyboard and input method, as the toolkit sees them. Texts are UTF-8. Main thread.
namespace tarnix::qt6::keyboard {

/// Whether `object`, which has the focus or may have it, edits text: not one that only shows it.
bool editsText(QObject& object);

/// Hands `text` to what edits text, as an input method hands over what it has composed.
void commit(QObject& object, std::string_view text);

/// Presses and lets go the key of one character, a user-perceived one, in the window.
void typeCharacter(QWindow& window, std::string_view character);

}  // namespace tarnix::qt6::keyboard
