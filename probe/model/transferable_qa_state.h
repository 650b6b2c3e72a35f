#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/transferable_qa_result.h"

namespace tarnix {

/// The test checklist of one build of the host.
struct TransferableQAState {
  std::vector<TransferableQAResult> results;
  /// The host's build string.
  std::string buildNumber;

  bool operator==(const TransferableQAState&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"results", &TransferableQAState::results},
                      Field{"buildNumber", &TransferableQAState::buildNumber}};
  }
};

}  // namespace tarnix
