#include "probe/commands/screen_html_command.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "probe/capture/probe_screen_tracker.h"
#include "probe/commands/screen_html_renderer.h"
#include "probe/commands/send_response.h"
#include "probe/inspect/probe_accessibility_scanner.h"
#include "probe/model/screen_html_response.h"
#include "probe/overlay/probe_touch_overlay.h"

namespace tarnix::ProbeCommandHandler {

void handleScreenHTML() {
  ProbeTouchOverlay::showScan();
  const std::vector<ProbeAccessibilityScanner::Element> elements =
      ProbeAccessibilityScanner::scanAll();
  const std::string& screen = ProbeScreenTracker::lastScreenName();
  sendResponse(CompanionMessageType::responseScreenHTML,
               ScreenHTMLResponse{.screen = screen,
                                  .html = ScreenHTMLRenderer::render(screen, elements),
                                  .elementCount = static_cast<std::int64_t>(elements.size())});
}

}  // namespace tarnix::ProbeCommandHandler
