#include "platforms/qt6/widgets/widget_view.h"

#include <QAbstractScrollArea>
#include <QGraphicsOpacityEffect>
#include <QGraphicsView>
#include <QScrollArea>
#include <QWindow>
#include <utility>

#include "platforms/qt6/shared/author_name.h"
#include "platforms/qt6/shared/frame.h"
#include "platforms/qt6/shared/spoken_label.h"
#include "platforms/qt6/widgets/covers.h"
#include "platforms/qt6/widgets/embedded_scene.h"
#include "platforms/qt6/widgets/graphics_proxies.h"
#include "platforms/qt6/widgets/widget_area.h"
#include "platforms/qt6/widgets/widget_interaction.h"
#include "platforms/qt6/widgets/widget_label.h"
#include "platforms/qt6/widgets/widget_responder.h"
#include "platforms/qt6/widgets/widget_traits.h"

namespace tarnix::qt6 {

namespace {

bool isComposite(WidgetKind kind) {
  return kind == WidgetKind::comboBox || kind == WidgetKind::spinBox;
}

/// Whether the content of this viewport counts as a whole.
bool isScrolledWhole(const QWidget& widget) {
  const auto* const area = qobject_cast<const QScrollArea*>(widget.parentWidget());
  return area != nullptr && area->viewport() == &widget;
}

}  // namespace

WidgetView::WidgetView(QWidget& widget, QPointF topLeft,
                       std::shared_ptr<const Surroundings> surroundings,
                       std::shared_ptr<const Buddies> buddies, ViewSource& source)
    : widget_(&widget),
      class_(classOf(widget)),
      topLeft_(topLeft),
      surroundings_(std::move(surroundings)),
      buddies_(std::move(buddies)),
      source_(source) {}

double WidgetView::alpha() const {
  if (widget_ == nullptr) {
    return 0;
  }
  const auto* const effect = qobject_cast<const QGraphicsOpacityEffect*>(widget_->graphicsEffect());
  const double opacity = effect != nullptr && effect->isEnabled() ? effect->opacity() : 1;
  return widget_->isWindow() ? opacity * widget_->windowOpacity() : opacity;
}

bool WidgetView::isTextField() const {
  return widget_ != nullptr && description().isElement && qt6::isTextField(*widget_, class_.kind);
}

const WidgetView::Description& WidgetView::description() const {
  if (!description_ || widget_ == nullptr) {
    description_ = describe();
  }
  return *description_;
}

WidgetView::Description WidgetView::describe() const {
  Description result;
  if (widget_ == nullptr || !widget_->isVisible() ||
      surroundings_->opacity * alpha() < smallestVisibleOpacity) {
    return result;
  }
  const WidgetKind kind = class_.kind;
  const std::optional<platform::AccessibilityTraits> traits = traitsOf(*widget_, kind);
  if (!traits || (surroundings_->insideCompositeControl && kind == WidgetKind::lineEdit)) {
    return result;
  }
  result.label = inOneLine(labelOf(*widget_, kind, buddies_.get()));
  result.traits = *traits;
  if (!saysSomething(result.label, *traits) ||
      (kind == WidgetKind::label &&
       SpokenText::covers(surroundings_->spoken.get(), result.label))) {
    return result;
  }
  result.area = surroundings_->visiblePart(areaOf(*widget_, kind).translated(topLeft_));
  result.isElement = !result.area.isEmpty();
  result.value = valueOf(*widget_, kind);
  if (result.value) {
    result.value = withoutLineBreaks(*std::move(result.value));
  }
  return result;
}

platform::Rect WidgetView::accessibilityFrame() const {
  if (widget_ == nullptr) {
    return {};
  }
  // What is an element is where it can be pointed at; any other view is where it is.
  const Description& own = description();
  return frameOf(own.isElement ? own.area : QRectF(topLeft_, widget_->size()));
}

platform::Rect WidgetView::wholeFrame() const {
  return widget_ == nullptr ? platform::Rect() : frameOf(QRectF(topLeft_, widget_->size()));
}

platform::ViewKind WidgetView::kind() const {
  return widget_ == nullptr ? platform::ViewKind::other : viewKindOf(*widget_, class_.kind);
}

std::optional<std::string> WidgetView::accessibilityIdentifier() const {
  return widget_ == nullptr ? std::nullopt : authorsName(*widget_);
}

platform::TouchReactions WidgetView::touchReactions() const {
  if (widget_ == nullptr) {
    return {};
  }
  return {.isUserInteractionEnabled = isUserInteractionEnabled(*widget_, class_.kind),
          .isControl = isControl(*widget_, class_.kind),
          .hasGestureRecognizers = hasGestureRecognizers(*widget_, class_.kind)};
}

std::optional<std::string> WidgetView::accessibilityValue() const {
  const std::optional<QString>& value = description().value;
  return value ? std::optional(value->toStdString()) : std::nullopt;
}

std::vector<std::shared_ptr<platform::View>> WidgetView::subviews() const {
  std::vector<std::shared_ptr<View>> result;
  if (widget_ == nullptr) {
    return result;
  }
  if (widget_->children().isEmpty() && !showsWindow(class_.kind)) {
    return result;
  }
  const std::shared_ptr<const Surroundings> surroundings = surroundingsOfChildren();
  if (QWindow* const window = embeddedWindow(*widget_, class_.kind)) {
    Surroundings inside = *surroundings;
    inside.origin = topLeft_;
    if (std::shared_ptr<View> view = source_.viewOf(*window, inside)) {
      result.push_back(std::move(view));
    }
  }
  if (class_.kind == WidgetKind::graphicsView) {
    result = graphics_proxies::viewsIn(static_cast<const QGraphicsView&>(*widget_), topLeft_,
                                       *surroundings, source_);
  }
  // Views are read only, and handed out as ones that could be more.
  const auto superview = std::const_pointer_cast<WidgetView>(shared_from_this());
  const std::shared_ptr<const Buddies> buddies = Buddies::collect(*widget_, buddies_);
  const Covers covers(*widget_);
  for (QObject* child : widget_->children()) {
    if (!child->isWidgetType()) {
      continue;
    }
    auto* const widget = static_cast<QWidget*>(child);
    if (widget->isWindow()) {
      continue;
    }
    const QRegion covered = covers.over(*widget);
    std::shared_ptr<const Surroundings> around = surroundings;
    if (!covered.isEmpty()) {
      auto narrowed = std::make_shared<Surroundings>(*surroundings);
      narrowed->cover(covered.translated(topLeft_.toPoint()));
      around = std::move(narrowed);
    }
    auto view = std::make_shared<WidgetView>(*widget, topLeft_ + widget->pos(), std::move(around),
                                             buddies, source_);
    view->superview_ = superview;
    result.push_back(std::move(view));
  }
  return result;
}

std::shared_ptr<WidgetView> WidgetView::viewOfChild(const QWidget& child) const {
  for (std::shared_ptr<View>& view : subviews()) {
    auto candidate = std::dynamic_pointer_cast<WidgetView>(std::move(view));
    if (candidate != nullptr && candidate->widget_ == &child) {
      return candidate;
    }
  }
  return nullptr;
}

std::shared_ptr<platform::Responder> WidgetView::responder() const {
  if (widget_ == nullptr) {
    return nullptr;
  }
  const QPoint centre = areaOf(*widget_, class_.kind).center().toPoint();
  return std::make_shared<WidgetResponder>(*widget_, class_.kind, centre, std::nullopt);
}

std::shared_ptr<const Surroundings> WidgetView::surroundingsOfChildren() const {
  auto result = std::make_shared<Surroundings>(*surroundings_);
  const QRectF area(topLeft_, widget_->size());
  if (isScrolledWhole(*widget_) && !surroundings_->visiblePart(area).isEmpty()) {
    *result = result->unclippedIn(area);
  } else {
    *result = result->clippedTo(area);
  }
  result->opacity *= alpha();
  result->insideCompositeControl |= isComposite(class_.kind);
  // What stands inside a titled group is not the group's text.
  const bool isButton = class_.kind == WidgetKind::button || class_.kind == WidgetKind::toggle ||
                        isComposite(class_.kind);
  if (isButton && description().isElement) {
    result->spoken = spokenInside();
  }
  return result;
}

std::shared_ptr<const SpokenText> WidgetView::spokenInside() const {
  struct Kept {
    SpokenText text;
    std::shared_ptr<const SpokenText> outer;
  };
  const Description& own = description();
  const std::shared_ptr<const SpokenText>& outer = surroundings_->spoken;
  const auto kept = std::make_shared<const Kept>(
      Kept{{own.label, own.value.value_or(QString()), outer.get()}, outer});
  return {kept, &kept->text};
}

const PlainItems& WidgetView::parts() const {
  if (!parts_) {
    const bool isSeen = widget_ != nullptr && widget_->isVisible() &&
                        surroundings_->opacity * alpha() >= smallestVisibleOpacity;
    parts_ = isSeen ? partsOf(*widget_, class_.kind, topLeft_, *surroundings_) : PlainItems();
  }
  return *parts_;
}

std::optional<std::size_t> WidgetView::accessibilityElementCount() const {
  return hasParts(class_.kind) ? std::optional(parts().size()) : std::nullopt;
}

std::shared_ptr<platform::AccessibilityItem> WidgetView::accessibilityElement(
    std::size_t index) const {
  return index < parts().size() ? parts()[index] : nullptr;
}

}  // namespace tarnix::qt6
