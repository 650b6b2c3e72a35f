#pragma once

#include <QString>

class QTextDocument;

/// Text as it stands on the screen. Main thread.
namespace tarnix::qt6 {

/// No label and no value is longer, in UTF-16 code units: a whole novel in an editor must not hold
/// the main thread.
inline constexpr int maximumTextLength = 65'536;

/// How a text says what it looks like; the values are those of the text items themselves.
enum class TextFormat { plain = 0, rich = 1, automatic = 2, markdown = 3, styled = 4 };

struct VisibleText {
  QString text;
  /// All of it is one or more links.
  bool isLink = false;
};

/// What `text` reads on the screen.
VisibleText visibleText(const QString& text, TextFormat format);

/// Rich text, if it is any, reduced to what it reads.
QString plainText(const QString& text);

/// The first characters of a document, up to `maximumTextLength`.
QString beginningOf(const QTextDocument& document);

/// Whether the letter in "(&F)", as East Asian translations write it, is shown.
enum class ParenthesisedMnemonic { shown, removed };

/// `text` without the marks of keyboard shortcuts: "&File" reads "File", "A && B" reads "A & B".
QString withoutMnemonic(const QString& text, ParenthesisedMnemonic parenthesised);

}  // namespace tarnix::qt6
