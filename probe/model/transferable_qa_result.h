#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// One point of a test checklist. `priority` and `status` are opaque to the probe.
struct TransferableQAResult {
  Uuid id;
  std::string title;
  std::string notes;
  std::string priority;
  std::vector<std::string> endpoints;
  std::string status;
  std::string failNotes;
  /// The `id`s of `TransferableNetworkRequest` records.
  std::vector<Uuid> attachedRequestIds;

  bool operator==(const TransferableQAResult&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableQAResult::id},
                      Field{"title", &TransferableQAResult::title},
                      Field{"notes", &TransferableQAResult::notes},
                      Field{"priority", &TransferableQAResult::priority},
                      Field{"endpoints", &TransferableQAResult::endpoints},
                      Field{"status", &TransferableQAResult::status},
                      Field{"failNotes", &TransferableQAResult::failNotes},
                      Field{"attachedRequestIds", &TransferableQAResult::attachedRequestIds}};
  }
};

}  // namespace tarnix
