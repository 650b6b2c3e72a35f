#include "probe/commands/overlay_commands.h"

#include "probe/capture/probelog.h"
#include "probe/model/overlay_command.h"
#include "probe/overlay/probe_touch_overlay.h"

namespace tarnix::ProbeCommandHandler {

void handleShowOverlay(const CompanionMessage& message) {
  const std::optional<OverlayCommand> command = message.decode<OverlayCommand>();
  if (!command) {
    probelog("[TarnixProbe] handleShowOverlay: decode failed\n");
    return;
  }
  const std::string& category = command->category;
  const std::optional<std::string>& detail = command->detail;
  probelog("[TarnixProbe] handleShowOverlay: " + category + " / " + detail.value_or("-") + "\n");
  if (category == "scan") {
    ProbeTouchOverlay::showScan();
  } else if (category == "capture") {
    ProbeTouchOverlay::showCaptureFlash();
  } else if (category == "data") {
    ProbeTouchOverlay::showDataPulse(detail.value_or("data"));
  } else if (category == "verify") {
    ProbeTouchOverlay::showVerifyResult(command->passed.value_or(true), detail.value_or(""));
  } else if (category == "environment") {
    ProbeTouchOverlay::showEnvironmentSwitch(detail.value_or("env"));
  } else if (detail) {
    ProbeTouchOverlay::showOrb(ProbeToolCategory::reading, detail);
  }
}

void handleHideOverlay() { ProbeTouchOverlay::hideOrb(); }

}  // namespace tarnix::ProbeCommandHandler
