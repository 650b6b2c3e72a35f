#include "platforms/qt6/widgets/label_link.h"

#include <QAbstractTextDocumentLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QStyle>
#include <QTextBlock>
#include <QTextDocument>

#include "platforms/qt6/widgets/text_links.h"
#include "platforms/qt6/widgets/widget_label.h"

namespace tarnix::qt6 {

namespace {

// Whether anybody listens is for derived classes only.
struct OpenLabel : QLabel {
  static bool followsLinks(const QLabel& label) {
    return label.openExternalLinks() ||
           (label.*&OpenLabel::isSignalConnected)(QMetaMethod::fromSignal(&QLabel::linkActivated));
  }
};

bool canFollowLinks(const QLabel& label) {
  const bool isRich = label.textFormat() == Qt::RichText ||
                      label.textFormat() == Qt::MarkdownText ||
                      (label.textFormat() == Qt::AutoText && Qt::mightBeRichText(label.text()));
  return isRich && label.textInteractionFlags().testFlag(Qt::LinksAccessibleByMouse) &&
         OpenLabel::followsLinks(label);
}

/// The label keeps how it lays its text out to itself, so the text is laid out once more. Returns
/// where the document stands in the label.
QPoint layOut(const QLabel& label, QTextDocument& document) {
  document.setDefaultFont(label.font());
  document.setDocumentMargin(0);
  if (label.textFormat() == Qt::MarkdownText) {
    document.setMarkdown(label.text());
  } else {
    document.setHtml(label.text());
  }
  const int margin = label.margin();
  QRect area = label.contentsRect().adjusted(margin, margin, -margin, -margin);
  Qt::Alignment alignment = QStyle::visualAlignment(label.layoutDirection(), label.alignment());
  const int indent = label.indent() >= 0      ? label.indent()
                     : label.frameWidth() > 0 ? label.fontMetrics().horizontalAdvance('x') / 2
                                              : 0;
  if (alignment & Qt::AlignLeft) {
    area.setLeft(area.left() + indent);
  } else if (alignment & Qt::AlignRight) {
    area.setRight(area.right() - indent);
  }
  QTextOption option = document.defaultTextOption();
  option.setAlignment(alignment);
  option.setWrapMode(label.wordWrap() ? QTextOption::WordWrap : QTextOption::ManualWrap);
  document.setDefaultTextOption(option);
  document.setTextWidth(area.width());
  const int height = qRound(document.size().height());
  int top = area.top();
  if (alignment & Qt::AlignVCenter) {
    top += (area.height() - height) / 2;
  } else if (alignment & Qt::AlignBottom) {
    top += area.height() - height;
  }
  return {area.left(), top};
}

}  // namespace

bool hasLinkAt(const QLabel& label, QPoint point) {
  if (!canFollowLinks(label)) {
    return false;
  }
  QTextDocument document;
  const QPoint origin = layOut(label, document);
  return !document.documentLayout()->anchorAt(point - origin).isEmpty();
}

std::vector<PlainItem::Description> linksOf(const QLabel& label) {
  // Most labels are no more than a word, and there may be thousands.
  if (!label.text().contains(QLatin1String("href")) && label.textFormat() != Qt::MarkdownText) {
    return {};
  }
  if (!canFollowLinks(label)) {
    return {};
  }
  QTextDocument document;
  const QPoint origin = layOut(label, document);
  std::vector<PlainItem::Description> links = linksIn(document.begin(), origin, label.rect());
  // What is one link as a whole says so itself.
  return links.size() == 1 && textOfLabel(label).isLink ? std::vector<PlainItem::Description>()
                                                        : links;
}

}  // namespace tarnix::qt6
