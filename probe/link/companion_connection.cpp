#include "probe/link/companion_connection.h"

#include <exception>
#include <utility>

namespace tarnix {
namespace {

// How long a companion's machine may be silent before the system asks whether it is still there.
constexpr std::chrono::seconds keepaliveIdle{5};

/// Of a long message: one that is being written, one to follow it.
constexpr std::size_t piecesAtOnce = 2;

CompanionError withoutForm() {
  return {CompanionError::Kind::encoding, "the message cannot be put into a frame"};
}

std::optional<std::string> encodeFrame(const CompanionMessage& message) {
  try {
    std::optional<std::string> text = message.encodeEnvelope(CompanionFramer::roomForHeader());
    return text ? CompanionFramer::finishOutput(*std::move(text)) : std::nullopt;
  } catch (const std::exception&) {
    // Out of memory: the message is lost, the thread is not.
    return std::nullopt;
  }
}

std::optional<CompanionError> networkError(const std::optional<platform::NetworkError>& error) {
  if (!error) {
    return std::nullopt;
  }
  return CompanionError{CompanionError::Kind::network, error->description};
}

}  // namespace

platform::TcpParameters companionTcp() {
  return {.enableKeepalive = true, .keepaliveIdle = keepaliveIdle};
}

CompanionConnection::CompanionConnection(std::shared_ptr<platform::Connection> connection,
                                         platform::SerialQueue& queue)
    : connection_(std::move(connection)), queue_(queue) {}

void CompanionConnection::setStateHandler(StateHandler handler) {
  connection_->setStateHandler(std::move(handler));
}

void CompanionConnection::start() { connection_->start(); }

void CompanionConnection::cancel() { connection_->cancel(); }

void CompanionConnection::sendCompanionMessage(CompanionMessage message,
                                               SendCompletion completion) {
  queue_.async([self = shared_from_this(),
                outgoing = Outgoing{std::move(message), std::move(completion)}]() mutable {
    if (self->longSend_ != nullptr) {
      self->waiting_.push_back(std::move(outgoing));
    } else {
      self->write(std::move(outgoing));
    }
  });
}

void CompanionConnection::write(Outgoing outgoing) {
  if (outgoing.message.longPayload != nullptr) {
    writeLong(std::move(outgoing));
    return;
  }
  std::optional<std::string> frame = encodeFrame(outgoing.message);
  if (!frame) {
    outgoing.completion(withoutForm());
    return;
  }
  connection_->send(*std::move(frame), [completion = std::move(outgoing.completion)](
                                           const std::optional<platform::NetworkError>& error) {
    completion(networkError(error));
  });
}

void CompanionConnection::writeLong(Outgoing outgoing) {
  std::optional<OutgoingFrame> frame = OutgoingFrame::make(std::move(outgoing.message));
  if (!frame) {
    outgoing.completion(withoutForm());
    return;
  }
  const auto send =
      std::make_shared<LongSend>(LongSend{*std::move(frame), std::move(outgoing.completion)});
  longSend_ = send;
  // While one piece waits for the network the next one is made.
  for (std::size_t count = 0; count < piecesAtOnce && send == longSend_; ++count) {
    writePiece(send);
  }
}

void CompanionConnection::writePiece(const std::shared_ptr<LongSend>& send) {
  try {
    std::string piece = send->frame.nextPiece();
    if (piece.empty()) {
      return;
    }
    connection_->send(std::move(piece), [self = shared_from_this(),
                                         send](const std::optional<platform::NetworkError>& error) {
      self->handlePieceWritten(send, error);
    });
    ++send->piecesOnTheirWay;
  } catch (const std::exception& error) {
    // Memory ran out in the middle of a frame, behind which the companion finds nothing more.
    connection_->cancel();
    endLongSend(platform::NetworkError{error.what()});
  }
}

void CompanionConnection::handlePieceWritten(const std::shared_ptr<LongSend>& send,
                                             const std::optional<platform::NetworkError>& error) {
  if (send != longSend_) {
    // A piece behind one that failed.
    return;
  }
  --send->piecesOnTheirWay;
  if (!error) {
    writePiece(send);
  }
  if (send == longSend_ && (error || send->piecesOnTheirWay == 0)) {
    endLongSend(error);
  }
}

void CompanionConnection::endLongSend(const std::optional<platform::NetworkError>& error) {
  const std::shared_ptr<LongSend> ended = std::exchange(longSend_, nullptr);
  ended->completion(networkError(error));
  while (longSend_ == nullptr && !waiting_.empty()) {
    Outgoing next = std::move(waiting_.front());
    waiting_.pop_front();
    write(std::move(next));
  }
}

void CompanionConnection::receiveCompanionMessage(ReceiveHandler handler) {
  queue_.async([self = shared_from_this(), handler = std::move(handler)] {
    self->receivers_.push_back(handler);
    self->serveReceivers();
  });
}

void CompanionConnection::serveReceivers() {
  // A frame that is too large for this machine's memory ends its connection, not the host.
  try {
    while (!receivers_.empty()) {
      if (!serveNextReceiver()) {
        requestBytes();
        return;
      }
    }
  } catch (const std::exception& error) {
    connection_->cancel();
    failNextReceiver(error.what());
  }
}

bool CompanionConnection::serveNextReceiver() {
  const std::optional<std::string> body = framer_.nextBody();
  if (!body) {
    return false;
  }
  std::optional<CompanionMessage> message = CompanionMessage::decodeEnvelope(*body);
  std::optional<CompanionError> error;
  if (!message) {
    error = {CompanionError::Kind::decoding, "the frame holds no companion message"};
  }
  const ReceiveHandler receiver = std::move(receivers_.front());
  receivers_.pop_front();
  receiver(std::move(message), std::move(error));
  return true;
}

void CompanionConnection::requestBytes() {
  if (isReceiving_) {
    return;
  }
  isReceiving_ = true;
  connection_->receive(
      [self = shared_from_this()](const std::string& bytes,
                                  const std::optional<platform::NetworkError>& error) {
        self->isReceiving_ = false;
        self->handleBytes(bytes, error);
      });
}

void CompanionConnection::handleBytes(const std::string& bytes,
                                      const std::optional<platform::NetworkError>& error) {
  if (error) {
    failNextReceiver(error->description);
    // Whoever asks next learns the same from the connection.
    serveReceivers();
    return;
  }
  try {
    framer_.handleInput(bytes);
  } catch (const std::exception& exception) {
    connection_->cancel();
    failNextReceiver(exception.what());
    return;
  }
  serveReceivers();
}

void CompanionConnection::failNextReceiver(std::string description) {
  if (receivers_.empty()) {
    return;
  }
  const ReceiveHandler receiver = std::move(receivers_.front());
  receivers_.pop_front();
  receiver(std::nullopt, CompanionError{CompanionError::Kind::network, std::move(description)});
}

}  // namespace tarnix
