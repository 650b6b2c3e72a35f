#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "probe/link/companion_framer.h"
#include "probe/link/companion_message.h"
#include "probe/link/outgoing_frame.h"
#include "probe/platform/network.h"

namespace tarnix {

/// What a listener for companions asks of its connections.
platform::TcpParameters companionTcp();

struct CompanionError {
  enum class Kind {
    /// The stream has ended.
    network,
    /// A frame whose body is no envelope. The stream goes on behind it.
    decoding,
    /// A message that cannot be put into a frame; nothing was sent.
    encoding,
  };

  Kind kind = Kind::network;
  /// For people.
  std::string description;
};

/// A stream of companion messages on top of a stream of bytes. May be called from any thread;
/// coding and framing happen on the network's queue, and so does every handler and completion.
/// Work that is outstanding keeps the object alive.
class CompanionConnection : public std::enable_shared_from_this<CompanionConnection> {
 public:
  using StateHandler = platform::Connection::StateHandler;
  using SendCompletion = std::function<void(std::optional<CompanionError>)>;
  /// Either a message or an error.
  using ReceiveHandler =
      std::function<void(std::optional<CompanionMessage>, std::optional<CompanionError>)>;

  /// `queue` is that of the network that `connection` comes from; it outlives this object.
  CompanionConnection(std::shared_ptr<platform::Connection> connection,
                      platform::SerialQueue& queue);

  /// Called before `start`.
  void setStateHandler(StateHandler handler);
  void start();
  void cancel();

  void sendCompanionMessage(CompanionMessage message, SendCompletion completion);

  /// Hands over the next message. Several requests are answered in the order in which they came.
  void receiveCompanionMessage(ReceiveHandler handler);

 private:
  struct Outgoing {
    CompanionMessage message;
    SendCompletion completion;
  };
  /// A message that is written in pieces.
  struct LongSend {
    OutgoingFrame frame;
    SendCompletion completion;
    std::size_t piecesOnTheirWay = 0;
  };

  void write(Outgoing outgoing);
  void writeLong(Outgoing outgoing);
  void writePiece(const std::shared_ptr<LongSend>& send);
  void handlePieceWritten(const std::shared_ptr<LongSend>& send,
                          const std::optional<platform::NetworkError>& error);
  void endLongSend(const std::optional<platform::NetworkError>& error);

  void serveReceivers();
  bool serveNextReceiver();
  void requestBytes();
  void handleBytes(const std::string& bytes, const std::optional<platform::NetworkError>& error);
  void failNextReceiver(std::string description);

  const std::shared_ptr<platform::Connection> connection_;
  platform::SerialQueue& queue_;

  // Below: on the queue only.
  /// Null when none is on its way.
  std::shared_ptr<LongSend> longSend_;
  /// What waits for its end.
  std::deque<Outgoing> waiting_;
  CompanionFramer framer_;
  std::deque<ReceiveHandler> receivers_;
  bool isReceiving_ = false;
};

}  // namespace tarnix
