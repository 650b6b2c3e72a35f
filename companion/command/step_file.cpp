#include "companion/command/step_file.h"

#include <fmt/format.h>
#include <yaml-cpp/yaml.h>

#include <stdexcept>
#include <utility>

namespace tarnix::companion {
namespace {

/// A pause or a wait of more than an hour is a slip of the pen.
constexpr double longestSeconds = 3600;

/// With the place in the file; caught before it leaves this file.
class StepError : public std::runtime_error {
 public:
  StepError(const YAML::Node& node, const std::string& what)
      : std::runtime_error(fmt::format("line {}: {}", node.Mark().line + 1, what)) {}
};

std::string textOf(const YAML::Node& node, const char* what) {
  if (!node.IsScalar()) {
    throw StepError(node, fmt::format("{} is a text", what));
  }
  return node.as<std::string>();
}

std::vector<std::int64_t> numbersOf(const YAML::Node& node, std::size_t count, const char* what) {
  std::vector<std::int64_t> numbers;
  // Iterated over, a map has entries that are no nodes.
  for (std::size_t index = 0; node.IsSequence() && index < node.size(); ++index) {
    const YAML::Node entry = node[index];
    std::int64_t number = 0;
    if (!YAML::convert<std::int64_t>::decode(entry, number)) {
      throw StepError(entry, fmt::format("{} is made of whole numbers", what));
    }
    numbers.push_back(number);
  }
  if (!node.IsSequence() || numbers.size() != count) {
    throw StepError(node, fmt::format("{} is a list of {} whole numbers", what, count));
  }
  return numbers;
}

std::chrono::duration<double> secondsOf(const YAML::Node& node, const char* what) {
  double seconds = 0;
  if (!node.IsScalar() || !YAML::convert<double>::decode(node, seconds) || !(seconds >= 0) ||
      seconds > longestSeconds) {
    throw StepError(node, fmt::format("{} is a number of seconds, at most an hour", what));
  }
  return std::chrono::duration<double>(seconds);
}

TapStep tapOf(const YAML::Node& node) {
  if (node.IsScalar()) {
    return {0, 0, node.as<std::string>()};
  }
  const std::vector<std::int64_t> point = numbersOf(node, 2, "what is tapped, unless a label,");
  return {point[0], point[1], std::nullopt};
}

SwipeStep swipeOf(const YAML::Node& node) {
  const std::vector<std::int64_t> points = numbersOf(node, 4, "a swipe, X1 Y1 X2 Y2,");
  return {points[0], points[1], points[2], points[3]};
}

WaitStep waitOf(const YAML::Node& node) {
  if (!node.IsMap()) {
    throw StepError(node, "a wait says what for: text, gone or screen");
  }
  WaitStep step;
  for (const auto& entry : node) {
    const std::string key = textOf(entry.first, "a key");
    if (key == "text") {
      step.text = textOf(entry.second, "the text");
    } else if (key == "gone") {
      step.gone = textOf(entry.second, "the text that goes");
    } else if (key == "screen") {
      step.screen = textOf(entry.second, "the name of a screen");
    } else if (key == "within") {
      step.within = secondsOf(entry.second, "the time of a wait");
    } else {
      throw StepError(entry.first, fmt::format("a wait has no \"{}\"", key));
    }
  }
  if (!step.text && !step.gone && !step.screen) {
    throw StepError(node, "a wait says what for: text, gone or screen");
  }
  return step;
}

Step stepOf(const YAML::Node& node) {
  if (node.IsMap() && node.size() > 1) {
    throw StepError(node, "a step has one key; each step begins with a dash of its own");
  }
  if (!node.IsMap() || node.size() != 1) {
    throw StepError(node, "a step is one of tap, swipe, type, wait and pause, with a colon");
  }
  const YAML::Node kind = node.begin()->first;
  const YAML::Node what = node.begin()->second;
  const std::string name = textOf(kind, "a step");
  if (name == "tap") {
    return tapOf(what);
  }
  if (name == "swipe") {
    return swipeOf(what);
  }
  if (name == "type") {
    return TypeStep{textOf(what, "what is typed")};
  }
  if (name == "wait") {
    return waitOf(what);
  }
  if (name == "pause") {
    return PauseStep{secondsOf(what, "a pause")};
  }
  throw StepError(kind, fmt::format("there is no step \"{}\"", name));
}

}  // namespace

std::variant<std::vector<Step>, std::string> stepsIn(const std::string& yaml) {
  try {
    const YAML::Node list = YAML::Load(yaml);
    if (!list.IsSequence()) {
      return std::string("it is not a list of steps, each beginning with a dash");
    }
    std::vector<Step> steps;
    for (const YAML::Node& node : list) {
      steps.push_back(stepOf(node));
    }
    return steps;
  } catch (const YAML::Exception& error) {
    return fmt::format("line {}: {}", error.mark.line + 1, error.msg);
  } catch (const StepError& error) {
    return std::string(error.what());
  }
}

}  // namespace tarnix::companion
