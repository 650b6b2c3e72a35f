#pragma once

#include <cstddef>
#include <vector>

#include "probe/model/audit_issue.h"

/// Looks for what keeps people from using the screen with assistive technology, or with a finger.
/// Sees what `ProbeAccessibilityScanner` sees. Main thread.
namespace tarnix::ProbeAccessibilityAuditor {

/// What is to be touched is at least this wide and high, in device-independent pixels.
inline constexpr int smallestTouchTarget = 44;

/// Of a label that names an element in an issue, in characters.
inline constexpr std::size_t longestQuotedLabel = 30;

/// From top to bottom; the issues of one element together.
std::vector<AuditIssue> audit();

}  // namespace tarnix::ProbeAccessibilityAuditor
