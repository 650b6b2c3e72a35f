#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/audit_issue.h"

namespace tarnix {

/// What "response.accessibilityAudit" carries.
struct AccessibilityAuditResponse {
  /// Name of the screen on view.
  std::string screen;
  /// From top to bottom.
  std::vector<ProbeAccessibilityAuditor::AuditIssue> issues;
  std::int64_t issueCount = 0;

  bool operator==(const AccessibilityAuditResponse&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"screen", &AccessibilityAuditResponse::screen},
                      Field{"issues", &AccessibilityAuditResponse::issues},
                      Field{"issueCount", &AccessibilityAuditResponse::issueCount}};
  }
};

}  // namespace tarnix
