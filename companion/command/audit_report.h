#pragma once

#include <string>
#include <vector>

#include "companion/output/terminal.h"
#include "probe/model/accessibility_audit_response.h"

namespace tarnix::companion {

/// A table for people.
std::string auditTable(const AccessibilityAuditResponse& audit, const Terminal& terminal);

/// A SARIF 2.1.0 log for code-review tools. An issue's place is its screen, under the name of a
/// file that stands for it, since no tool knows places that are in no file.
std::string sarifLog(const AccessibilityAuditResponse& audit, const std::string& application);

/// How many issues are errors, not only warnings.
std::size_t errorCount(const AccessibilityAuditResponse& audit);

}  // namespace tarnix::companion
