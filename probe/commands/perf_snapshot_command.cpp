#include "probe/commands/perf_snapshot_command.h"

#include "probe/capture/probe_perf_monitor.h"
#include "probe/capture/probe_screen_tracker.h"
#include "probe/commands/send_response.h"
#include "probe/model/perf_snapshot_response.h"
#include "probe/overlay/probe_touch_overlay.h"

namespace tarnix::ProbeCommandHandler {

void handlePerfSnapshot() {
  ProbeTouchOverlay::showDataPulse("perf");
  const ProbePerfMonitor::Snapshot snapshot = ProbePerfMonitor::snapshot();
  sendResponse(CompanionMessageType::responsePerfSnapshot,
               PerfSnapshotResponse{.fps = snapshot.fps,
                                    .memoryMB = snapshot.memoryMB,
                                    .avgFPS = snapshot.avgFPS,
                                    .peakMemoryMB = snapshot.peakMemoryMB,
                                    .screen = ProbeScreenTracker::lastScreenName()});
}

}  // namespace tarnix::ProbeCommandHandler
