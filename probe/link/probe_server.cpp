#include "probe/link/probe_server.h"

#include <algorithm>
#include <string>
#include <utility>

#include "probe/capture/probelog.h"
#include "probe/commands/probe_command_handler.h"
#include "probe/model/probe_sync_builder.h"
#include "probe/platform/file.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/now.h"
#include "probe/platform/platform.h"

namespace tarnix {
namespace {

constexpr const char* serviceType = "_tarnix._tcp";

bool passesBackPressure(CompanionMessageType type) {
  return type == CompanionMessageType::heartbeat || type == CompanionMessageType::syncFull;
}

std::shared_ptr<ProbeServer>& sharedServer() {
  static std::shared_ptr<ProbeServer>& server =
      *new std::shared_ptr<ProbeServer>(std::make_shared<ProbeServer>());
  return server;
}

}  // namespace

template <class Step>
void ProbeServer::onMain(std::weak_ptr<ProbeServer> weakServer, Step step) {
  platform::current().mainQueue->async(
      [weakServer = std::move(weakServer), step = std::move(step)]() mutable {
        const std::shared_ptr<ProbeServer> server = weakServer.lock();
        if (!server) {
          return;
        }
        try {
          step(*server);
        } catch (...) {
          // Out of memory, in practice. A companion that was served by half would wait for ever for
          // the other half, so it is let go, and finds the server whole when it comes back.
          server->handleConnectionLost();
        }
      });
}

ProbeServer& ProbeServer::shared() { return *sharedServer(); }

void ProbeServer::setShared(std::shared_ptr<ProbeServer> server) {
  // There always is one: captures ask it from any thread.
  sharedServer() = server ? std::move(server) : std::make_shared<ProbeServer>();
}

ProbeServer::ProbeServer(std::span<const CaptureInstaller> installers) : installers_(installers) {}

ProbeServer::~ProbeServer() = default;

void ProbeServer::start() {
  platform::assertMainThread();
  if (listener_) {
    return;
  }
  const platform::Platform& platform = platform::current();
  platform::ListenerResult made = platform.network->makeListener(companionTcp());
  if (!made.listener) {
    probelog("[TarnixProbe] Failed to create listener: " + made.error + "\n");
    return;
  }
  const std::string deviceName = platform.device->name();
  made.listener->setService({.name = deviceName, .type = serviceType});
  made.listener->setStateHandler([weak = weak_from_this()](platform::ListenerState state) {
    onMain(weak, [state](ProbeServer& server) { server.handleListenerState(state); });
  });
  made.listener->setNewConnectionHandler([weak = weak_from_this(), waiting = waitingConnections_](
                                             std::shared_ptr<platform::Connection> connection) {
    waiting->add(std::move(connection));
    onMain(weak, [](ProbeServer& server) {
      if (std::shared_ptr<platform::Connection> next = server.waitingConnections_->take()) {
        server.handleNewConnection(std::move(next));
      }
    });
  });
  listener_ = std::move(made.listener);
  listener_->start();

  const std::string bundleIdentifier = platform.bundle->bundleIdentifier().value_or("unknown");
  for (const CaptureInstaller& installer : installers_) {
    if (installer.install != nullptr) {
      installer.install(bundleIdentifier);
    }
  }
  probelog("[TarnixProbe] Bonjour listener started as \"" + deviceName + "\" on " + serviceType +
           "\n");
  // Whoever started the host waits for this file. A directory that cannot be written to is theirs
  // to notice.
  platform::createFile(readyMarkerPath, "ready", platform::FileReaders::everybody);
}

void ProbeServer::handleListenerState(platform::ListenerState state) {
  platform::assertMainThread();
  switch (state) {
    case platform::ListenerState::ready:
      probelog("[TarnixProbe] Listener ready\n");
      break;
    case platform::ListenerState::failed:
      probelog("[TarnixProbe] Listener failed — restarting in 2s\n");
      if (listener_) {
        listener_->cancel();
        listener_.reset();
      }
      platform::current().mainQueue->asyncAfter(restartDelay, [weak = weak_from_this()] {
        onMain(weak, [](ProbeServer& server) { server.start(); });
      });
      break;
    case platform::ListenerState::cancelled:
      break;
  }
}

void ProbeServer::handleNewConnection(std::shared_ptr<platform::Connection> connection) {
  platform::assertMainThread();
  probelog("[TarnixProbe] New connection received\n");
  if (activeConnection_) {
    activeConnection_->cancel();
  }
  pendingSendCount_ = 0;
  activeConnection_ = std::make_shared<CompanionConnection>(std::move(connection),
                                                            platform::current().network->queue());
  activeConnection_->setStateHandler([weak = weak_from_this()](platform::ConnectionState state) {
    onMain(weak, [state](ProbeServer& server) { server.handleConnectionState(state); });
  });
  activeConnection_->start();
}

void ProbeServer::handleConnectionState(platform::ConnectionState state) {
  platform::assertMainThread();
  switch (state) {
    case platform::ConnectionState::ready:
      probelog("[TarnixProbe] Connection ready — sending full sync\n");
      isConnected_ = true;
      sendFullSync();
      startHeartbeat();
      break;
    case platform::ConnectionState::failed:
    case platform::ConnectionState::cancelled:
      handleConnectionLost();
      break;
  }
}

void ProbeServer::sendFullSync() {
  std::optional<CompanionMessage> message = CompanionMessage::make(
      CompanionMessageType::syncFull, ProbeSyncBuilder::buildFullSync(), platform::now());
  if (message) {
    send(*std::move(message));
  }
  receiveNextMessage();
}

void ProbeServer::receiveNextMessage() {
  if (!activeConnection_) {
    return;
  }
  activeConnection_->receiveCompanionMessage(
      [weak = weak_from_this()](std::optional<CompanionMessage> message,
                                std::optional<CompanionError> error) {
        onMain(weak, [message = std::move(message), error = std::move(error)](ProbeServer& server) {
          server.handleReceived(message, error);
        });
      });
}

void ProbeServer::handleReceived(const std::optional<CompanionMessage>& message,
                                 const std::optional<CompanionError>& error) {
  platform::assertMainThread();
  if (error && error->kind != CompanionError::Kind::decoding) {
    handleConnectionLost();
    return;
  }
  // Before it is handled: what a command makes the host do may run a loop of its own, and the
  // companion's next command may be what ends that.
  receiveNextMessage();
  if (message && message->type != CompanionMessageType::heartbeat) {
    ProbeCommandHandler::handle(*message);
  }
}

void ProbeServer::startHeartbeat() {
  // The old timer ends before the new one is made, so that two never run.
  heartbeatTimer_.reset();
  heartbeatTimer_ =
      platform::current().mainQueue->scheduledTimer(heartbeatInterval, [weak = weak_from_this()] {
        onMain(weak, [](ProbeServer& server) { server.sendHeartbeat(); });
      });
}

void ProbeServer::sendHeartbeat() {
  platform::assertMainThread();
  if (isConnected_) {
    send({CompanionMessageType::heartbeat, "", platform::now()});
  }
}

bool ProbeServer::hasRoom(CompanionMessageType type) const {
  platform::assertMainThread();
  return activeConnection_ && isConnected_ &&
         (pendingSendCount_ < maxPendingSends || passesBackPressure(type));
}

void ProbeServer::send(CompanionMessage message) {
  if (!hasRoom(message.type)) {
    return;
  }
  ++pendingSendCount_;
  activeConnection_->sendCompanionMessage(
      std::move(message), [weak = weak_from_this()](std::optional<CompanionError> error) {
        onMain(weak, [error = std::move(error)](ProbeServer& server) { server.handleSent(error); });
      });
}

void ProbeServer::handleSent(const std::optional<CompanionError>& error) {
  platform::assertMainThread();
  // A completion may belong to a connection that is gone, whose count went with it.
  pendingSendCount_ = std::max<std::int64_t>(pendingSendCount_ - 1, 0);
  if (error) {
    handleConnectionLost();
  }
}

void ProbeServer::handleConnectionLost() {
  probelog("[TarnixProbe] Connection lost\n");
  isConnected_ = false;
  pendingSendCount_ = 0;
  heartbeatTimer_.reset();
  if (activeConnection_) {
    activeConnection_->cancel();
    activeConnection_.reset();
  }
}

}  // namespace tarnix
