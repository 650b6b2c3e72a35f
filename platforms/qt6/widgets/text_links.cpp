#include "platforms/qt6/widgets/text_links.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QTextLayout>
#include <algorithm>

#include "platforms/qt6/shared/spoken_label.h"

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;

// No screen shows more.
constexpr std::size_t mostLinks = 1'000;
constexpr int mostBlocks = 2'000;

/// A link may be written in several styles, each of which is a fragment.
struct Link {
  QString address;
  QString text;
  int begin = 0;
  int end = 0;
};

/// Where the first line of it stands, in the viewport.
QRect areaOf(const QTextEdit& widget, const QTextBlock& block, const Link& link) {
  QTextCursor cursor(block);
  cursor.setPosition(link.begin);
  const QRect first = widget.cursorRect(cursor);
  const QTextLine line = block.layout()->lineForTextPosition(link.begin - block.position());
  const int endOfLine =
      line.isValid() ? block.position() + line.textStart() + line.textLength() : link.end;
  cursor.setPosition(std::min(link.end, endOfLine));
  const QRect last = widget.cursorRect(cursor);
  if (last.top() != first.top()) {
    // The place behind the last letter of a line is the first one of the next.
    return QRect(first.left(), first.top(), widget.viewport()->width() - first.left(),
                 first.height());
  }
  return QRect(QPoint(std::min(first.left(), last.left()), first.top()),
               QPoint(std::max(first.left(), last.left()), first.bottom()));
}

std::vector<Link> linksOf(const QTextBlock& block) {
  std::vector<Link> links;
  for (auto step = block.begin(); !step.atEnd(); ++step) {
    const QTextFragment fragment = step.fragment();
    const QString address = fragment.charFormat().anchorHref();
    if (address.isEmpty()) {
      continue;
    }
    const int end = fragment.position() + fragment.length();
    if (!links.empty() && links.back().address == address &&
        links.back().end == fragment.position()) {
      links.back().text += fragment.text();
      links.back().end = end;
    } else {
      links.push_back({address, fragment.text(), fragment.position(), end});
    }
  }
  return links;
}

}  // namespace

std::vector<PlainItem::Description> visibleLinks(const QTextEdit& widget) {
  std::vector<PlainItem::Description> result;
  const QWidget& viewport = *widget.viewport();
  if (!widget.textInteractionFlags().testFlag(Qt::LinksAccessibleByMouse) ||
      !viewport.isVisible()) {
    return result;
  }
  QTextBlock block = widget.cursorForPosition(QPoint(0, 0)).block();
  for (int count = 0; block.isValid() && count < mostBlocks; block = block.next(), ++count) {
    const QRect beginning = widget.cursorRect(QTextCursor(block));
    if (beginning.top() > viewport.height()) {
      break;
    }
    for (const Link& link : linksOf(block)) {
      PlainItem::Description description;
      description.label = inOneLine(link.text);
      description.area =
          areaOf(widget, block, link).intersected(viewport.rect()).translated(viewport.pos());
      description.traits = widget.isEnabled() ? traits::link : traits::link | traits::notEnabled;
      result.push_back(std::move(description));
    }
    if (result.size() >= mostLinks) {
      break;
    }
  }
  return result;
}

}  // namespace tarnix::qt6
