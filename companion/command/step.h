#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace tarnix::companion {

struct TapStep {
  /// A point, or the label of what stands there.
  std::int64_t x = 0;
  std::int64_t y = 0;
  std::optional<std::string> label;
};

struct SwipeStep {
  std::int64_t x1 = 0;
  std::int64_t y1 = 0;
  std::int64_t x2 = 0;
  std::int64_t y2 = 0;
};

struct TypeStep {
  std::string text;
};

/// Goes on when all that is given holds.
struct WaitStep {
  std::optional<std::string> text;
  std::optional<std::string> gone;
  std::optional<std::string> screen;
  /// How long it may take; absent as long as anything may.
  std::optional<std::chrono::duration<double>> within;
};

struct PauseStep {
  std::chrono::duration<double> duration{};
};

/// One thing to do with an application.
using Step = std::variant<TapStep, SwipeStep, TypeStep, WaitStep, PauseStep>;

/// For people, in one line.
std::string describe(const Step& step);

}  // namespace tarnix::companion
