#include "platforms/qt6/shared/visible_text.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>

#include "platforms/qt6/shared/simple_markup.h"

namespace tarnix::qt6 {

namespace {

// A document writes where a table or a list of its begins and ends in characters that stand for
// none.
constexpr QChar beginningOfFrame(u'\xfdd0');
constexpr QChar endOfFrame(u'\xfdd1');

// Pictures inside a text, and the several kinds of line ends that a document knows.
QString readable(QString text) {
  text.remove(QChar::ObjectReplacementCharacter);
  text.replace(beginningOfFrame, u'\n');
  text.replace(endOfFrame, u'\n');
  text.replace(QChar::ParagraphSeparator, u'\n');
  text.replace(QChar::LineSeparator, u'\n');
  text.replace(QChar::Nbsp, u' ');
  return text.trimmed();
}

bool isAllLinks(const QTextDocument& document) {
  bool hasLink = false;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextFragment fragment = part.fragment();
      if (fragment.charFormat().isAnchor()) {
        hasLink = true;
      } else if (!fragment.text().trimmed().isEmpty()) {
        return false;
      }
    }
  }
  return hasLink;
}

VisibleText read(const QTextDocument& document) {
  return {readable(document.toRawText()), isAllLinks(document)};
}

}  // namespace

VisibleText visibleText(const QString& text, TextFormat format) {
  if (format == TextFormat::plain ||
      (format == TextFormat::automatic && !Qt::mightBeRichText(text)) ||
      // Most texts that say that they are styled are not.
      (format != TextFormat::markdown && !text.contains(u'<') && !text.contains(u'&'))) {
    return {text.left(maximumTextLength), false};
  }
  if (format != TextFormat::markdown) {
    if (const std::optional<VisibleText> read = readSimpleMarkup(text.left(maximumTextLength))) {
      return *read;
    }
  }
  QTextDocument document;
  document.setUndoRedoEnabled(false);
  if (format == TextFormat::markdown) {
    document.setMarkdown(text.left(maximumTextLength));
  } else {
    document.setHtml(text.left(maximumTextLength));
  }
  return read(document);
}

QString plainText(const QString& text) { return visibleText(text, TextFormat::automatic).text; }

QString beginningOf(const QTextDocument& document) {
  QString result;
  for (QTextBlock block = document.begin(); block.isValid() && result.size() < maximumTextLength;
       block = block.next()) {
    if (block != document.begin()) {
      result += u'\n';
    }
    result += block.text();
  }
  result.truncate(maximumTextLength);
  return readable(std::move(result));
}

QString withoutMnemonic(const QString& text, ParenthesisedMnemonic parenthesised) {
  if (!text.contains(u'&')) {
    return text;
  }
  QString result;
  result.reserve(text.size());
  for (qsizetype at = 0; at < text.size(); ++at) {
    if (parenthesised == ParenthesisedMnemonic::removed && at + 3 < text.size() &&
        text.at(at) == u'(' && text.at(at + 1) == u'&' && text.at(at + 2) != u'&' &&
        text.at(at + 3) == u')') {
      while (!result.isEmpty() && result.back().isSpace()) {
        result.chop(1);
      }
      at += 3;
      continue;
    }
    if (text.at(at) == u'&') {
      ++at;
      if (at == text.size()) {
        break;
      }
    }
    result += text.at(at);
  }
  return result;
}

}  // namespace tarnix::qt6
