#include "platforms/qt6/widgets/label_link.h"

#include <QAbstractTextDocumentLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QStyle>
#include <QTextDocument>

namespace tarnix::qt6 {

namespace {

// Whether anybody listens is for derived classes only.
struct OpenLabel : QLabel {
  static bool followsLinks(const QLabel& label) {
    return label.openExternalLinks() ||
           (label.*&OpenLabel::isSignalConnected)(QMetaMethod::fromSignal(&QLabel::linkActivated));
  }
};

}  // namespace

bool hasLinkAt(const QLabel& label, QPoint point) {
  const bool isRich = label.textFormat() == Qt::RichText ||
                      label.textFormat() == Qt::MarkdownText ||
                      (label.textFormat() == Qt::AutoText && Qt::mightBeRichText(label.text()));
  if (!isRich || !(label.textInteractionFlags() & Qt::LinksAccessibleByMouse) ||
      !OpenLabel::followsLinks(label)) {
    return false;
  }
  // The label keeps how it lays its text out to itself, so the text is laid out once more.
  QTextDocument document;
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
  return !document.documentLayout()->anchorAt(point - QPoint(area.left(), top)).isEmpty();
}

}  // namespace tarnix::qt6
