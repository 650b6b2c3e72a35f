#include <array>
#include <vector>

#include "probe/overlay/label.h"
#include "probe/overlay/overlay_effect.h"
#include "probe/overlay/system_colors.h"

namespace tarnix::ProbeTouchOverlay {

using overlay::Animator;
using overlay::Label;
using overlay::Layer;
using overlay::Property;
using overlay::TimingCurve;
namespace colors = overlay::colors;

namespace {

std::shared_ptr<Layer> makeBand(const platform::Rect& frame) {
  auto band = std::make_shared<Layer>(frame);
  band->backgroundColor = colors::systemCyan.withAlpha(0.15);
  band->setValue(Property::opacity, 0);
  return band;
}

void pulseOnce(const Stage& stage, double delay) {
  const std::shared_ptr<Layer> ring = makeCircle({stage.root->size().width - 30, 50}, 24);
  ring->borderWidth = 1.5;
  ring->borderColor = colors::readingPurple.withAlpha(0.7);
  ring->setValue(Property::opacity, 0);
  ring->setValue(Property::scale, 0.5);
  stage.root->add(ring);
  Animator& animator = *stage.animator;
  animator.animate({.duration = 0.4, .delay = delay, .curve = TimingCurve::easeOut()},
                   {{ring, Property::opacity, 1}, {ring, Property::scale, 1}}, [ring, &animator] {
                     animator.animate({.duration = 0.3},
                                      {{ring, Property::scale, 2}, {ring, Property::opacity, 0}},
                                      [ring] { ring->removeFromSuperlayer(); });
                   });
}

}  // namespace

void showScan() {
  writeLine("showScan");
  showOrb(ProbeToolCategory::scanning, "screen");
  const Stage stage = Stage::current();
  if (!stage) {
    return;
  }
  const platform::Size size = stage.root->size();
  constexpr double lineHeight = 2;
  constexpr double bandHeight = 3;
  const auto line = std::make_shared<Layer>(platform::Rect{{0, 0}, {size.width, lineHeight}});
  line->backgroundColor = colors::systemCyan.withAlpha(0.8);
  line->shadow = platform::Shadow{.color = colors::systemCyan.withAlpha(0.9), .radius = 8};
  const std::shared_ptr<Layer> top = makeBand({{0, 0}, {size.width, bandHeight}});
  const std::shared_ptr<Layer> bottom =
      makeBand({{0, size.height - bandHeight}, {size.width, bandHeight}});
  for (const std::shared_ptr<Layer>& layer : {line, top, bottom}) {
    stage.root->add(layer);
  }
  Animator& animator = *stage.animator;
  const auto fade = [=, &animator] {
    animator.animate(
        {.duration = 0.2},
        {{line, Property::opacity, 0}, {top, Property::opacity, 0}, {bottom, Property::opacity, 0}},
        [=] {
          line->removeFromSuperlayer();
          top->removeFromSuperlayer();
          bottom->removeFromSuperlayer();
        });
  };
  animator.animate({.duration = 0.1}, {{top, Property::opacity, 1}, {bottom, Property::opacity, 1}},
                   [=, &animator] {
                     animator.animate({.duration = 0.6},
                                      {{line, Property::positionY, size.height - lineHeight / 2}},
                                      fade);
                   });
}

void showCaptureFlash() {
  writeLine("showCaptureFlash");
  showOrb(ProbeToolCategory::capture, "screenshot");
  const Stage stage = Stage::current();
  if (!stage) {
    return;
  }
  const auto flash = std::make_shared<Layer>(platform::Rect{{0, 0}, stage.root->size()});
  flash->backgroundColor = colors::white;
  flash->setValue(Property::opacity, 0);
  stage.root->add(flash);
  Animator& animator = *stage.animator;
  animator.animate({.duration = 0.08}, {{flash, Property::opacity, 0.7}}, [flash, &animator] {
    animator.animate({.duration = 0.25}, {{flash, Property::opacity, 0}},
                     [flash] { flash->removeFromSuperlayer(); });
  });
}

void showDataPulse(std::string_view detail) {
  writeLine("showDataPulse \u2014 " + std::string(detail));
  showOrb(ProbeToolCategory::reading, std::string(detail));
  if (const Stage stage = Stage::current()) {
    for (const double delay : {0.0, 0.15, 0.3}) {
      pulseOnce(stage, delay);
    }
  }
}

void showVerifyResult(bool passed, std::string_view detail) {
  const std::string result = passed ? "PASS" : "FAIL";
  writeLine("showVerify \u2014 " + result + " " + std::string(detail));
  showOrb(ProbeToolCategory::verifying, result);
  const Stage stage = Stage::current();
  if (!stage) {
    return;
  }
  const platform::Size size = stage.root->size();
  const std::shared_ptr<Layer> badge = makeCircle({size.width / 2, size.height / 2 - 40}, 48);
  badge->backgroundColor = (passed ? colors::systemGreen : colors::systemRed).withAlpha(0.9);
  badge->setValue(Property::opacity, 0);
  badge->setValue(Property::scale, 0.3);
  const auto mark = std::make_shared<Label>(platform::Rect{{0, 0}, badge->size()});
  mark->text = passed ? "\u2713" : "\u2717";
  mark->font = {.size = 26};
  mark->textColor = colors::white;
  badge->add(mark);
  stage.root->add(badge);
  Animator& animator = *stage.animator;
  animator.animate(
      {.duration = 0.3, .curve = TimingCurve::spring(0.5)},
      {{badge, Property::opacity, 1}, {badge, Property::scale, 1}}, [badge, &animator] {
        animator.animate({.duration = 0.25, .delay = 0.6}, {{badge, Property::opacity, 0}},
                         [badge] { badge->removeFromSuperlayer(); });
      });
}

void showEnvironmentSwitch(std::string_view name) {
  writeLine("showEnvSwitch \u2014 " + std::string(name));
  showOrb(ProbeToolCategory::environment, std::string(name));
}

}  // namespace tarnix::ProbeTouchOverlay
