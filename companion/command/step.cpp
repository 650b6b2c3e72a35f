#include "companion/command/step.h"

#include <fmt/format.h>

namespace tarnix::companion {
namespace {

struct Describer {
  std::string operator()(const TapStep& step) const {
    return step.label ? fmt::format("tap \"{}\"", *step.label)
                      : fmt::format("tap {},{}", step.x, step.y);
  }
  std::string operator()(const SwipeStep& step) const {
    return fmt::format("swipe {},{} to {},{}", step.x1, step.y1, step.x2, step.y2);
  }
  std::string operator()(const TypeStep& step) const {
    return fmt::format("type \"{}\"", step.text);
  }
  std::string operator()(const WaitStep& step) const {
    std::string result = "wait";
    if (step.text) {
      result += fmt::format(" for \"{}\"", *step.text);
    }
    if (step.gone) {
      result += fmt::format(" until \"{}\" is gone", *step.gone);
    }
    if (step.screen) {
      result += fmt::format(" for the screen \"{}\"", *step.screen);
    }
    return result;
  }
  std::string operator()(const PauseStep& step) const {
    return fmt::format("pause {} s", step.duration.count());
  }
};

}  // namespace

std::string describe(const Step& step) { return std::visit(Describer(), step); }

}  // namespace tarnix::companion
