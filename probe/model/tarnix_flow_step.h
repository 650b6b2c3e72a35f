#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "probe/link/record.h"
#include "probe/model/tarnix_flow_step_action.h"
#include "probe/model/tarnix_flow_step_coordinates.h"

namespace tarnix {

/// One step of a recorded user flow.
struct TarnixFlowStep {
  using Action = TarnixFlowStepAction;
  using Coordinates = TarnixFlowStepCoordinates;

  Action action = Action::tap;
  /// The screen on which the step happened.
  std::string screen;
  /// Of the element acted on.
  std::optional<std::string> label;
  /// What was typed.
  std::optional<std::string> text;
  std::optional<Coordinates> startCoordinates;
  std::optional<Coordinates> endCoordinates;
  std::optional<std::map<std::string, std::string>> extra;

  bool operator==(const TarnixFlowStep&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"action", &TarnixFlowStep::action},
                      Field{"screen", &TarnixFlowStep::screen},
                      Field{"label", &TarnixFlowStep::label},
                      Field{"text", &TarnixFlowStep::text},
                      Field{"startCoordinates", &TarnixFlowStep::startCoordinates},
                      Field{"endCoordinates", &TarnixFlowStep::endCoordinates},
                      Field{"extra", &TarnixFlowStep::extra}};
  }
};

}  // namespace tarnix
