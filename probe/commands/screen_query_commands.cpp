#include "probe/commands/screen_query_commands.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "probe/capture/probe_screen_tracker.h"
#include "probe/capture/probe_web_view_console_capture.h"
#include "probe/commands/console_selection.h"
#include "probe/commands/send_response.h"
#include "probe/inspect/key_window.h"
#include "probe/inspect/probe_accessibility_auditor.h"
#include "probe/inspect/probe_accessibility_scanner.h"
#include "probe/inspect/probe_view_hierarchy_snapshot.h"
#include "probe/inspect/truncation.h"
#include "probe/model/accessibility_audit_response.h"
#include "probe/model/find_command.h"
#include "probe/model/find_response.h"
#include "probe/model/screen_text_response.h"
#include "probe/model/screenshot_response.h"
#include "probe/model/snapshot_response.h"
#include "probe/overlay/probe_touch_overlay.h"
#include "probe/platform/png.h"

namespace tarnix::ProbeCommandHandler {
namespace {

FoundElement foundElement(ProbeAccessibilityScanner::Element element) {
  const platform::Rect& frame = element.frame;
  return {.label = std::move(element.label),
          .type = std::string(element.type),
          .x = truncatedTowardZero(frame.minX()),
          .y = truncatedTowardZero(frame.minY()),
          .width = truncatedTowardZero(frame.size.width),
          .height = truncatedTowardZero(frame.size.height),
          .centerX = truncatedTowardZero(frame.midX()),
          .centerY = truncatedTowardZero(frame.midY()),
          .isButton = element.isButton};
}

SnapshotElement snapshotElement(ProbeViewHierarchySnapshot::Element element) {
  const platform::Rect& frame = element.frame;
  return {.label = std::move(element.label),
          .identifier = std::move(element.identifier),
          .type = std::move(element.type),
          .x = truncatedTowardZero(frame.minX()),
          .y = truncatedTowardZero(frame.minY()),
          .width = truncatedTowardZero(frame.size.width),
          .height = truncatedTowardZero(frame.size.height),
          .interactive = element.isInteractive};
}

}  // namespace

void handleFindElement(const CompanionMessage& message) {
  ProbeTouchOverlay::showScan();
  std::optional<FindCommand> command = message.decode<FindCommand>();
  if (!command) {
    return;
  }
  FindResponse response{.screen = ProbeScreenTracker::lastScreenName(),
                        .query = std::move(command->text),
                        .results = {}};
  for (ProbeAccessibilityScanner::Element& element :
       ProbeAccessibilityScanner::find(response.query, command->exact.value_or(false))) {
    response.results.push_back(foundElement(std::move(element)));
  }
  sendResponse(CompanionMessageType::responseFindElement, response);
}

void handleScreenText() {
  ProbeTouchOverlay::showScan();
  sendResponse(CompanionMessageType::responseScreenText,
               ScreenTextResponse{.screen = ProbeScreenTracker::lastScreenName(),
                                  .lines = ProbeAccessibilityScanner::allVisibleText()});
}

void handleSnapshot() {
  ProbeTouchOverlay::showScan();
  SnapshotResponse response{.screen = ProbeScreenTracker::lastScreenName(), .elements = {}};
  std::vector<ProbeViewHierarchySnapshot::Element> elements = ProbeViewHierarchySnapshot::capture();
  response.elements.reserve(elements.size());
  for (ProbeViewHierarchySnapshot::Element& element : elements) {
    response.elements.push_back(snapshotElement(std::move(element)));
  }
  sendResponse(CompanionMessageType::responseSnapshot, response);
}

void handleScreenshot() {
  ProbeTouchOverlay::showCaptureFlash();
  const std::shared_ptr<platform::Window> window = keyWindow();
  const std::optional<platform::Picture> picture =
      window == nullptr ? std::nullopt : window->lastPicture();
  std::string png = picture ? platform::pngOf(*picture) : std::string();
  if (png.empty()) {
    return;
  }
  sendResponse(CompanionMessageType::responseScreenshot,
               ScreenshotResponse{.screen = ProbeScreenTracker::lastScreenName(),
                                  .base64PNG = {std::move(png)}});
}

void handleAccessibilityAudit() {
  ProbeTouchOverlay::showScan();
  AccessibilityAuditResponse response{.screen = ProbeScreenTracker::lastScreenName(),
                                      .issues = ProbeAccessibilityAuditor::audit()};
  response.issueCount = static_cast<std::int64_t>(response.issues.size());
  sendResponse(CompanionMessageType::responseAccessibilityAudit, response);
}

void handleGetWebViewConsole(const CompanionMessage& message) {
  ProbeTouchOverlay::showDataPulse("webview console");
  std::vector<ConsoleEntryResponse> entries;
  for (ProbeWebViewConsoleCapture::ConsoleEntry& entry : ProbeWebViewConsoleCapture::entries()) {
    entries.push_back({.timestamp = entry.timestamp.count(),
                       .level = std::move(entry.level),
                       .message = std::move(entry.message),
                       .url = std::move(entry.url)});
  }
  // A payload that says nothing asks for what most companions want.
  sendResponse(CompanionMessageType::responseWebViewConsole,
               consoleSelection(std::move(entries),
                                message.decode<GetConsoleCmd>().value_or(GetConsoleCmd())));
}

}  // namespace tarnix::ProbeCommandHandler
