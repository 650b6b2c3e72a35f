#include "platforms/qt6/widgets/text_links.h"

#include <QAbstractTextDocumentLayout>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

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

/// Where the first line of it stands in its document.
QRectF areaOf(const QTextBlock& block, const Link& link) {
  const int begin = link.begin - block.position();
  const QTextLine line = block.layout()->lineForTextPosition(begin);
  if (!line.isValid()) {
    return {};
  }
  const int end = std::min(link.end - block.position(), line.textStart() + line.textLength());
  const qreal left = line.cursorToX(begin);
  const qreal right = line.cursorToX(end);
  const QPointF corner = block.document()->documentLayout()->blockBoundingRect(block).topLeft() +
                         QPointF(std::min(left, right), line.y());
  return QRectF(corner, QSizeF(std::abs(right - left), line.height()));
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

std::vector<PlainItem::Description> linksIn(const QTextBlock& first, QPointF origin,
                                            const QRectF& visible) {
  std::vector<PlainItem::Description> result;
  QTextBlock block = first;
  for (int count = 0; block.isValid() && count < mostBlocks; block = block.next(), ++count) {
    const QRectF place = block.document()->documentLayout()->blockBoundingRect(block);
    if (place.top() + origin.y() > visible.bottom() || result.size() >= mostLinks) {
      break;
    }
    for (const Link& link : linksOf(block)) {
      PlainItem::Description description;
      description.label = link.text;
      description.area = areaOf(block, link).translated(origin).intersected(visible);
      description.traits = traits::link;
      result.push_back(std::move(description));
    }
  }
  return result;
}

std::vector<PlainItem::Description> visibleLinks(const QTextEdit& widget) {
  const QWidget& viewport = *widget.viewport();
  if (!widget.textInteractionFlags().testFlag(Qt::LinksAccessibleByMouse) ||
      !viewport.isVisible()) {
    return {};
  }
  const QPointF scrolled(widget.horizontalScrollBar()->value(),
                         widget.verticalScrollBar()->value());
  return linksIn(widget.cursorForPosition(QPoint(0, 0)).block(), viewport.pos() - scrolled,
                 viewport.geometry());
}

}  // namespace tarnix::qt6
