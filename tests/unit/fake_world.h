#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "probe/capture/probe_screen_tracker.h"
#include "probe/capture/probe_web_view_console_capture.h"
#include "probe/link/companion_framer.h"
#include "probe/link/companion_message.h"
#include "probe/link/probe_server.h"
#include "probe/model/probe_state.h"
#include "probe/overlay/probe_touch_overlay.h"
#include "tests/fakes/fake_platform.h"
#include "tests/fakes/fake_services.h"

namespace tarnix::tests {

inline std::string frameOf(std::string_view body) {
  return CompanionFramer::handleOutput(body).value();
}

inline std::string frameOf(const CompanionMessage& message) {
  return frameOf(message.encodeEnvelope().value());
}

/// What a stream of frames holds.
inline std::vector<CompanionMessage> messagesOf(std::string_view stream) {
  CompanionFramer framer;
  framer.handleInput(stream);
  std::vector<CompanionMessage> messages;
  while (const std::optional<std::string> body = framer.nextBody()) {
    messages.push_back(CompanionMessage::decodeEnvelope(*body).value());
  }
  return messages;
}

/// The type strings of what was sent over a connection, in order.
inline std::vector<std::string> typesSentTo(const fakes::FakeConnection& companion) {
  std::vector<std::string> types;
  for (const CompanionMessage& message : messagesOf(companion.written)) {
    types.emplace_back(rawValue(message.type));
  }
  return types;
}

/// A fake world with nothing left in it of the test before.
class FakeWorldTest : public testing::Test {
 protected:
  FakeWorldTest() {
    fakes::FakeServices::shared().reset();
    ProbeState::shared().clear();
    ProbeScreenTracker::setLastScreenName("Unknown");
    ProbeScreenTracker::detail::installed = true;
    ProbeWebViewConsoleCapture::forgetInstallation();
  }

  // The overlay's timers and frames belong to this world.
  ~FakeWorldTest() override { ProbeTouchOverlay::detail::state() = {}; }

  fakes::FakePlatform world_;
};

/// And a server in it, which is the one of the process. It installs no captures.
class ServerTest : public FakeWorldTest {
 protected:
  ServerTest() { ProbeServer::setShared(server_); }
  ~ServerTest() override { ProbeServer::setShared(nullptr); }

  void startServer() {
    server_->start();
    world_.settle();
  }

  /// A companion whose connection is ready and has everything that was sent so far.
  std::shared_ptr<fakes::FakeConnection> connectCompanion() {
    std::shared_ptr<fakes::FakeConnection> companion = world_.network.connect();
    world_.settle();
    companion->becomeReady();
    world_.settle();
    return companion;
  }

  void sendCommand(fakes::FakeConnection& companion, CompanionMessageType type,
                   std::string payload = "{}") {
    companion.arrive(frameOf(CompanionMessage{type, std::move(payload), {}}));
    world_.settle();
  }

  static CompanionMessage message(CompanionMessageType type) { return {type, "{}", {}}; }

  std::string standardError() const { return fakes::FakeServices::shared().standardErrorText(); }
  void forgetLines() { fakes::FakeServices::shared().reset(); }

  // Without captures, which have tests of their own and lines of their own.
  std::shared_ptr<ProbeServer> server_ =
      std::make_shared<ProbeServer>(std::span<const CaptureInstaller>());
};

}  // namespace tarnix::tests
