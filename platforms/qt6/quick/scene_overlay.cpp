#include "platforms/qt6/quick/scene_overlay.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGNode>
#include <QSGRectangleNode>
#include <QThread>
#include <cmath>
#include <utility>

#include "platforms/qt6/shared/figure_painter.h"

namespace tarnix::qt6 {

namespace {

// What was begun may never come to its end: a picture of the window is drawn without being shown.
constexpr std::chrono::milliseconds longestFrame{500};

/// What needs no picture; null for everything else.
const platform::RoundedRectangle* plainRectangle(const platform::Figure& figure) {
  const auto* const rectangle = figure.size() == 1 && !figure.front().clip
                                    ? std::get_if<platform::RoundedRectangle>(&figure.front().shape)
                                    : nullptr;
  return rectangle != nullptr && rectangle->cornerRadius == 0 && rectangle->borderWidth == 0 &&
                 !rectangle->shadow
             ? rectangle
             : nullptr;
}

QSGNode* makeNode(const platform::Figure& figure, QPointF origin, QQuickWindow& window) {
  const QRectF bounds = boundsOf(figure).translated(origin);
  if (const platform::RoundedRectangle* const rectangle = plainRectangle(figure)) {
    QSGRectangleNode* const node = window.createRectangleNode();
    node->setRect(bounds);
    const platform::Color& fill = rectangle->fill;
    node->setColor(QColor::fromRgbF(static_cast<float>(fill.red), static_cast<float>(fill.green),
                                    static_cast<float>(fill.blue),
                                    static_cast<float>(fill.alpha * figure.front().opacity)));
    return node;
  }
  const double ratio = window.effectiveDevicePixelRatio();
  const QRect seen = QRectF(QPointF(bounds.x() * ratio, bounds.y() * ratio), bounds.size() * ratio)
                         .toAlignedRect()
                         .adjusted(-1, -1, 1, 1) &
                     QRect(QPoint(0, 0), (QSizeF(window.size()) * ratio).toSize());
  if (seen.isEmpty()) {
    return nullptr;
  }
  QImage image(seen.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  {
    QPainter painter(&image);
    painter.translate(-seen.topLeft());
    painter.scale(ratio, ratio);
    painter.translate(origin);
    paintFigure(painter, figure);
  }
  QSGImageNode* const node = window.createImageNode();
  node->setTexture(window.createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
  node->setOwnsTexture(true);
  node->setRect(QRectF(QPointF(seen.topLeft()) / ratio, QSizeF(seen.size()) / ratio));
  return node;
}

}  // namespace

/// Holds the nodes of the figures. The last below the root: drawn over everything else.
class SceneOverlay::Node : public QSGNode {
 public:
  explicit Node(std::shared_ptr<SceneOverlay> overlay) : overlay_(std::move(overlay)) {}
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;
  ~Node() override { overlay_->node_ = nullptr; }

 private:
  const std::shared_ptr<SceneOverlay> overlay_;
};

void SceneOverlay::followFramesOf(QQuickWindow& window) {
  frames_ = QObject::connect(
      &window, &QQuickWindow::afterSynchronizing, &window,
      [self = shared_from_this(), &window] { self->synchronize(window); }, Qt::DirectConnection);
  swaps_ = QObject::connect(
      &window, &QQuickWindow::frameSwapped, &window,
      [self = shared_from_this()] { self->frameBegan_ = Clock::time_point(); },
      Qt::DirectConnection);
}

void SceneOverlay::show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) {
  list_ = std::move(list);
  origin_ = origin;
  isChanged_ = true;
}

void SceneOverlay::setHiddenForPicture(bool isHidden) {
  isHiddenForPicture_ = isHidden;
  isChanged_ = true;
}

void SceneOverlay::end() {
  hasEnded_ = true;
  if (node_ == nullptr) {
    stopFollowing();
  }
}

void SceneOverlay::stopFollowing() {
  QObject::disconnect(frames_);
  QObject::disconnect(swaps_);
}

bool SceneOverlay::isBeingDrawn() const { return Clock::now() - frameBegan_.load() < longestFrame; }

void SceneOverlay::synchronize(QQuickWindow& window) {
  if (hasEnded_) {
    delete node_;
    stopFollowing();
    return;
  }
  if (QThread::currentThread() != window.thread()) {
    frameBegan_ = Clock::now();
  }
  enter();
  if (node_ != nullptr && isChanged_) {
    fill(window);
    isChanged_ = false;
  }
}

void SceneOverlay::enter() {
  QSGNode* root = std::exchange(entry_, nullptr);
  if (root == nullptr || node_ != nullptr) {
    return;
  }
  while (root->parent() != nullptr) {
    root = root->parent();
  }
  if (root->type() == QSGNode::RootNodeType) {
    node_ = new Node(shared_from_this());
    // The scene graph may be taken down at any time.
    node_->setFlag(QSGNode::OwnedByParent);
    root->appendChildNode(node_);
    isChanged_ = true;
  }
}

void SceneOverlay::fill(QQuickWindow& window) {
  while (QSGNode* const child = node_->firstChild()) {
    delete child;
  }
  if (list_ == nullptr || isHiddenForPicture_) {
    return;
  }
  for (const platform::Figure& figure : *list_) {
    if (QSGNode* const child = makeNode(figure, origin_, window)) {
      child->setFlag(QSGNode::OwnedByParent);
      node_->appendChildNode(child);
    }
  }
}

}  // namespace tarnix::qt6
