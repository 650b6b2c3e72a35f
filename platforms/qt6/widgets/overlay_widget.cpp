#include "platforms/qt6/widgets/overlay_widget.h"

#include <QChildEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "platforms/qt6/shared/figure_painter.h"

namespace tarnix::qt6 {

namespace {

/// Few, and none most of the time.
std::vector<const OverlayWidget*>& living() {
  static std::vector<const OverlayWidget*>& instance = *new std::vector<const OverlayWidget*>;
  return instance;
}

bool isAboutChild(const QEvent& event) {
  return event.type() == QEvent::ChildAdded || event.type() == QEvent::ChildPolished ||
         event.type() == QEvent::ChildRemoved;
}

}  // namespace

OverlayWidget::OverlayWidget(QWidget& host) {
  // The toolkit's own accessible interfaces leave out a child of this name.
  setObjectName(QStringLiteral("qt_rubberband"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::NoFocus);
  living().push_back(this);
  host.installEventFilter(this);
  setParent(&host);
  setGeometry(host.rect());
  QWidget::show();
}

OverlayWidget::~OverlayWidget() {
  std::erase(living(), this);
  if (QWidget* const host = parentWidget()) {
    hide();
    // While the filter works.
    setParent(nullptr);
    host->removeEventFilter(this);
  }
}

bool OverlayWidget::isOne(const QObject& child) {
  return std::any_of(living().begin(), living().end(),
                     [&child](const OverlayWidget* each) { return each == &child; });
}

bool OverlayWidget::isPaintedOver(const QWidget& host) {
  return std::any_of(living().begin(), living().end(), [&host](const OverlayWidget* each) {
    return each->parentWidget() == &host && each->hasPainted_;
  });
}

bool OverlayWidget::eventFilter(QObject* watched, QEvent* event) {
  if (isAboutChild(*event) && static_cast<QChildEvent*>(event)->child() == this) {
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void OverlayWidget::show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) {
  const QWidget* const host = parentWidget();
  if (host == nullptr) {
    // The host has put all its children out.
    return;
  }
  const QRegion before = area();
  list_ = std::move(list);
  origin_ = origin;
  if (geometry() != host->rect()) {
    setGeometry(host->rect());
  }
  if (host->children().constLast() != this) {
    raise();
  }
  update(before + area());
}

QRegion OverlayWidget::area() const {
  QRegion result;
  if (list_ != nullptr) {
    for (const platform::Figure& figure : *list_) {
      result += boundsOf(figure).translated(origin_).toAlignedRect().adjusted(-1, -1, 1, 1);
    }
  }
  return result;
}

void OverlayWidget::paintEvent(QPaintEvent* event) {
  if (list_ == nullptr || isHiddenForPicture_) {
    return;
  }
  hasPainted_ = true;
  QPainter painter(this);
  painter.translate(origin_);
  for (const platform::Figure& figure : *list_) {
    if (event->region().intersects(boundsOf(figure).translated(origin_).toAlignedRect())) {
      paintFigure(painter, figure);
    }
  }
}

}  // namespace tarnix::qt6
