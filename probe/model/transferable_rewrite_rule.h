#pragma once

#include <string>
#include <tuple>

#include "probe/link/record.h"
#include "probe/link/timestamp.h"
#include "probe/model/transferable_url_match_pattern.h"
#include "probe/model/uuid.h"

namespace tarnix {

/// A rule that sends matching requests to another host.
struct TransferableRewriteRule {
  Uuid id;
  std::string name;
  TransferableURLMatchPattern matchPattern;
  std::string replacementHost;
  bool isEnabled = false;
  Timestamp createdAt;

  bool operator==(const TransferableRewriteRule&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"id", &TransferableRewriteRule::id},
                      Field{"name", &TransferableRewriteRule::name},
                      Field{"matchPattern", &TransferableRewriteRule::matchPattern},
                      Field{"replacementHost", &TransferableRewriteRule::replacementHost},
                      Field{"isEnabled", &TransferableRewriteRule::isEnabled},
                      Field{"createdAt", &TransferableRewriteRule::createdAt}};
  }
};

}  // namespace tarnix
