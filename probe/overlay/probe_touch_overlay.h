#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "probe/overlay/passthrough_window.h"
#include "probe/overlay/probe_orb_view.h"
#include "probe/overlay/probe_tool_category.h"
#include "probe/platform/main_queue.h"

/// What the companion does, shown over the host to whoever looks at it. Each effect is started and
/// forgotten: it names the tool in the orb, draws, and takes away what it drew. Effects may
/// overlap; the orb shows the latest. A host that cannot be drawn over gets the lines of the log
/// alone. Main thread.
namespace tarnix::ProbeTouchOverlay {

/// A ring where a tap lands.
void showTap(platform::Point at);
/// A trail with an arrowhead.
void showSwipe(platform::Point from, platform::Point to);
/// A badge above the field that is typed into, else near the lower edge.
void showTypeText(std::optional<platform::Point> near);
/// A line that sweeps over the screen.
void showScan();
/// A white flash.
void showCaptureFlash();
/// Three rings at the top right.
void showDataPulse(std::string_view detail);
/// A check mark or a cross in the middle.
void showVerifyResult(bool passed, std::string_view detail);
/// The orb alone.
void showEnvironmentSwitch(std::string_view name);

/// Shows the orb, or changes what it says, until 3 seconds after the last call.
void showOrb(ProbeToolCategory category, const std::optional<std::string>& detail);
/// Lets the orb go half a second from now.
void hideOrb();

namespace detail {

struct State {
  std::unique_ptr<PassthroughWindow> window;
  /// Stays in the window's tree, unseen, for the next time.
  std::shared_ptr<ProbeOrbView> orb;
  std::unique_ptr<platform::Timer> hideTimer;
};

/// Of the process; only tests put it back.
State& state();

/// The window to draw in, made at first use and whenever its scene has gone; null, with a line that
/// says so, when there is no scene.
PassthroughWindow* overlayWindow();

}  // namespace detail

}  // namespace tarnix::ProbeTouchOverlay
