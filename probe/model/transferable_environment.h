#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// A set of base URLs that an application can be pointed at.
struct TransferableEnvironment {
  Uuid id;
  std::string name;
  std::vector<std::string> baseURLs;
  std::string notes;

  bool operator==(const TransferableEnvironment&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableEnvironment::id},
                      Field{"name", &TransferableEnvironment::name},
                      Field{"baseURLs", &TransferableEnvironment::baseURLs},
                      Field{"notes", &TransferableEnvironment::notes}};
  }
};

}  // namespace tarnix
