#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "probe/link/record.h"

namespace tarnix::ProbeAccessibilityAuditor {

/// One thing about one element that keeps somebody from using it.
struct AuditIssue {
  /// Which element, in words.
  std::string element;
  std::string issue;
  /// "error" or "warning".
  std::string severity;
  /// The element's frame, in whole device-independent pixels.
  std::int64_t x = 0;
  std::int64_t y = 0;
  std::int64_t width = 0;
  std::int64_t height = 0;

  bool operator==(const AuditIssue&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"element", &AuditIssue::element},
                      Field{"issue", &AuditIssue::issue},
                      Field{"severity", &AuditIssue::severity},
                      Field{"x", &AuditIssue::x},
                      Field{"y", &AuditIssue::y},
                      Field{"width", &AuditIssue::width},
                      Field{"height", &AuditIssue::height}};
  }
};

}  // namespace tarnix::ProbeAccessibilityAuditor
