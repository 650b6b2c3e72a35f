#include "platforms/qt6/shared/keyboard.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QInputMethodQueryEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QWindow>

#include "platforms/qt6/shared/gui_symbol.h"
#include "platforms/qt6/shared/modality.h"

namespace tarnix::qt6::keyboard {

namespace {

using HandleKeyEvent = void (*)(QWindow*, QEvent::Type, int, Qt::KeyboardModifiers, const QString&,
                                bool, unsigned short);

QString stringOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

struct Key {
  int code;
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
  QString text;
};

Key keyOf(const QString& character) {
  if (character == QLatin1String("\n") || character == QLatin1String("\r\n") ||
      character == QLatin1String("\r")) {
    return {Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")};
  }
  if (character == QLatin1String("\t")) {
    return {Qt::Key_Tab, Qt::NoModifier, character};
  }
  if (character == QLatin1String("\b") || character == QLatin1String("\x7f")) {
    return {Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b")};
  }
  if (character == QLatin1String("\x1b")) {
    return {Qt::Key_Escape, Qt::NoModifier, character};
  }
  const QList<uint> codePoints = character.toUcs4();
  if (codePoints.size() != 1) {
    // No keyboard has a key for it, but an input method may send it so.
    return {Qt::Key_unknown, Qt::NoModifier, character};
  }
  const auto codePoint = static_cast<char32_t>(codePoints.first());
  // Keys are named by their capital letter.
  const bool isCapital = QChar::isUpper(codePoint);
  return {static_cast<int>(QChar::toUpper(codePoint)),
          isCapital ? Qt::ShiftModifier : Qt::NoModifier, character};
}

void send(QWindow& window, QEvent::Type type, const Key& key) {
  static const auto handleKeyEvent = guiSymbol<HandleKeyEvent>(
      "_Z17qt_handleKeyEventP7QWindowN6QEvent4TypeEi6QFlagsIN2Qt16KeyboardModifierEERK7QStringbt");
  if (handleKeyEvent != nullptr) {
    handleKeyEvent(&window, type, key.code, key.modifiers, key.text, false, 1);
  } else if (!isBlockedByModal(window)) {
    QKeyEvent event(type, key.code, key.modifiers, key.text);
    QCoreApplication::sendEvent(&window, &event);
  }
}

/// A touch beside the text of a field with a mask leaves the caret behind the last place of the
/// mask, where nothing can be typed. What is typed then goes to the first place that is free.
void leaveEndOfMask(QObject& field) {
  const QString mask = field.property("inputMask").toString();
  const QString shown = field.property("displayText").toString();
  if (mask.isEmpty() || field.property("cursorPosition").toInt() < shown.size() ||
      !field.property("selectedText").toString().isEmpty()) {
    return;
  }
  const qsizetype afterMask = mask.indexOf(u';');
  const QChar blank =
      afterMask >= 0 && afterMask + 1 < mask.size() ? mask[afterMask + 1] : QChar(u' ');
  if (const qsizetype free = shown.indexOf(blank); free >= 0) {
    field.setProperty("cursorPosition", static_cast<int>(free));
  }
}

}  // namespace

bool editsText(QObject& object) {
  QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImReadOnly);
  QCoreApplication::sendEvent(&object, &query);
  return query.value(Qt::ImEnabled).toBool() && !query.value(Qt::ImReadOnly).toBool();
}

void commit(QObject& object, std::string_view text) {
  leaveEndOfMask(object);
  QInputMethodEvent event;
  event.setCommitString(stringOf(text));
  QCoreApplication::sendEvent(&object, &event);
}

void typeCharacter(QWindow& window, std::string_view character) {
  const Key key = keyOf(stringOf(character));
  const QPointer<QWindow> alive = &window;
  send(window, QEvent::KeyPress, key);
  if (alive != nullptr) {
    send(window, QEvent::KeyRelease, key);
  }
}

}  // namespace tarnix::qt6::keyboard
