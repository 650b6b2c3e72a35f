#include <cmath>
#include <numbers>

#include "probe/overlay/label.h"
#include "probe/overlay/overlay_effect.h"
#include "probe/overlay/shape_layer.h"
#include "probe/overlay/system_colors.h"
#include "probe/platform/platform.h"

namespace tarnix::ProbeTouchOverlay {

using overlay::Animator;
using overlay::Label;
using overlay::Layer;
using overlay::Property;
using overlay::ShapeLayer;
using overlay::TimingCurve;
using overlay::colors::systemBlue;

namespace {

constexpr double arrowheadLength = 12;
constexpr double arrowheadAngle = std::numbers::pi / 6;

std::shared_ptr<ShapeLayer> makeTrail(platform::Point from, platform::Point to) {
  auto trail = std::make_shared<ShapeLayer>(ShapeLayer::Lines{{from, to}});
  trail->strokeColor = systemBlue.withAlpha(0.6);
  trail->lineWidth = 3;
  return trail;
}

std::shared_ptr<ShapeLayer> makeArrowhead(platform::Point from, platform::Point to) {
  const double direction = std::atan2(to.y - from.y, to.x - from.x);
  ShapeLayer::Lines strokes;
  for (const double angle : {-arrowheadAngle, arrowheadAngle}) {
    strokes.push_back({to,
                       {to.x - arrowheadLength * std::cos(direction + angle),
                        to.y - arrowheadLength * std::sin(direction + angle)}});
  }
  auto arrowhead = std::make_shared<ShapeLayer>(std::move(strokes));
  arrowhead->strokeColor = systemBlue.withAlpha(0.8);
  arrowhead->lineWidth = 2.5;
  return arrowhead;
}

}  // namespace

void showTap(platform::Point at) {
  writeLine("showTap at " + text(at));
  showOrb(ProbeToolCategory::input, "tap " + text(at));
  const Stage stage = Stage::current();
  if (!stage) {
    return;
  }
  const std::shared_ptr<Layer> ring = makeCircle(at, 44);
  ring->backgroundColor = systemBlue.withAlpha(0.35);
  ring->borderWidth = 2;
  ring->borderColor = systemBlue.withAlpha(0.7);
  ring->setValue(Property::scale, 0.3);
  const std::shared_ptr<Layer> dot = makeCircle({22, 22}, 8);
  dot->backgroundColor = overlay::colors::white;
  ring->add(dot);
  stage.root->add(ring);
  Animator& animator = *stage.animator;
  animator.animate({.duration = 0.25, .curve = TimingCurve::spring(0.6)},
                   {{ring, Property::scale, 1}}, [ring, &animator] {
                     animator.animate({.duration = 0.3, .delay = 0.1},
                                      {{ring, Property::scale, 1.5}, {ring, Property::opacity, 0}},
                                      [ring] { ring->removeFromSuperlayer(); });
                   });
}

void showSwipe(platform::Point from, platform::Point to) {
  writeLine("showSwipe " + text(from) + " -> " + text(to));
  showOrb(ProbeToolCategory::input, "swipe");
  const Stage stage = Stage::current();
  if (!stage) {
    return;
  }
  const std::shared_ptr<ShapeLayer> trail = makeTrail(from, to);
  const std::shared_ptr<Layer> startDot = makeCircle(from, 10);
  startDot->backgroundColor = systemBlue.withAlpha(0.8);
  const std::shared_ptr<Layer> endCircle = makeCircle(to, 16);
  endCircle->backgroundColor = systemBlue.withAlpha(0.5);
  endCircle->borderWidth = 2;
  endCircle->borderColor = systemBlue;
  const std::shared_ptr<ShapeLayer> arrowhead = makeArrowhead(from, to);
  for (const std::shared_ptr<Layer>& layer :
       {std::shared_ptr<Layer>(trail), startDot, endCircle, std::shared_ptr<Layer>(arrowhead)}) {
    stage.root->add(layer);
  }
  Animator& animator = *stage.animator;
  constexpr double drawing = 0.35;
  animator.add(*trail, "draw",
               {.property = Property::strokeEnd, .from = 0, .to = 1, .duration = drawing});
  animator.animate({.duration = drawing}, {}, [=, &animator] {
    for (const std::shared_ptr<ShapeLayer>& layer : {trail, arrowhead}) {
      animator.add(*layer, "fade",
                   {.property = Property::opacity,
                    .from = 1,
                    .to = 0,
                    .duration = 0.3,
                    .delay = 0.15,
                    .staysAtEnd = true});
    }
    animator.animate({.duration = 0.3, .delay = 0.15},
                     {{startDot, Property::opacity, 0}, {endCircle, Property::opacity, 0}}, [=] {
                       trail->removeFromSuperlayer();
                       startDot->removeFromSuperlayer();
                       endCircle->removeFromSuperlayer();
                       arrowhead->removeFromSuperlayer();
                     });
  });
}

void showTypeText(std::optional<platform::Point> near) {
  showOrb(ProbeToolCategory::input, "typing");
  const Stage stage = Stage::current();
  if (!stage) {
    return;
  }
  constexpr double height = 20;
  const auto badge = std::make_shared<Label>(platform::Rect{});
  badge->text = "  abc  ";
  badge->font = {.size = 11};
  badge->textColor = overlay::colors::white;
  badge->backgroundColor = systemBlue.withAlpha(0.8);
  badge->cornerRadius = 10;
  badge->clipsToBounds = true;
  badge->setSize(
      {platform::current().overlaySurfaces->sizeOf(badge->text, badge->font).width, height});
  badge->setPosition(
      near ? platform::Point{near->x, near->y - 30}
           : platform::Point{stage.root->size().width / 2, stage.root->size().height - 80});
  badge->setValue(Property::opacity, 0);
  badge->setValue(Property::scale, 0.7);
  stage.root->add(badge);
  Animator& animator = *stage.animator;
  animator.animate({.duration = 0.15}, {{badge, Property::opacity, 1}, {badge, Property::scale, 1}},
                   [badge, &animator] {
                     animator.animate({.duration = 0.25, .delay = 0.4},
                                      {{badge, Property::opacity, 0}},
                                      [badge] { badge->removeFromSuperlayer(); });
                   });
}

}  // namespace tarnix::ProbeTouchOverlay
