#include "platforms/qt6/shared/offset_animation.h"

#include <QHash>
#include <QObject>
#include <QVariantAnimation>
#include <utility>

namespace tarnix::qt6::offset_animation {

namespace {

/// In milliseconds.
constexpr int duration = 250;

QHash<const QObject*, QVariantAnimation*>& running() {
  static auto& instance = *new QHash<const QObject*, QVariantAnimation*>;
  return instance;
}

void forget(const QObject* object, QVariantAnimation* animation) {
  if (running().value(object) == animation) {
    running().remove(object);
  }
  animation->deleteLater();
}

}  // namespace

void start(QObject& object, QPointF from, QPointF to, std::function<void(QPointF)> apply,
           std::function<void()> finished) {
  if (QVariantAnimation* const before = running().take(&object)) {
    before->disconnect();
    before->stop();
    before->deleteLater();
  }
  // Not a child of the object: it would be among those that the host can list.
  auto* const animation = new QVariantAnimation;
  running().insert(&object, animation);
  animation->setDuration(duration);
  animation->setEasingCurve(QEasingCurve::OutCubic);
  animation->setStartValue(from);
  animation->setEndValue(to);
  QObject::connect(&object, &QObject::destroyed, animation, [animation](const QObject* gone) {
    animation->stop();
    forget(gone, animation);
  });
  QObject::connect(animation, &QVariantAnimation::valueChanged, animation,
                   [apply = std::move(apply)](const QVariant& value) { apply(value.toPointF()); });
  QObject::connect(animation, &QVariantAnimation::finished, animation,
                   [animation, scrolled = &object, finished = std::move(finished)] {
                     forget(scrolled, animation);
                     if (finished) {
                       finished();
                     }
                   });
  animation->start();
}

std::optional<QPointF> target(const QObject& object) {
  const QVariantAnimation* const animation = running().value(&object);
  return animation == nullptr ? std::nullopt : std::optional(animation->endValue().toPointF());
}

}  // namespace tarnix::qt6::offset_animation
