#pragma once

#include <cstdlib>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "probe/platform/connection.h"
#include "tests/fakes/fake_serial_queue.h"

namespace tarnix::fakes {

/// A connection whose peer is the test. Keeps the promises of `platform::Connection`, and ends the
/// test's process when the code under test does not keep its own.
class FakeConnection : public platform::Connection,
                       public std::enable_shared_from_this<FakeConnection> {
 public:
  explicit FakeConnection(FakeSerialQueue& queue) : queue_(queue) {}

  void setStateHandler(StateHandler handler) override {
    demand(!isStarted);
    stateHandler_ = std::move(handler);
  }

  void start() override {
    demand(!isStarted);
    isStarted = true;
  }

  void cancel() override {
    if (isCancelled) {
      return;
    }
    isCancelled = true;
    end("cancelled");
    becomes(platform::ConnectionState::cancelled);
  }

  void send(std::string bytes, SendCompletion completion) override {
    if (endReason_) {
      complete(std::move(completion), platform::NetworkError{*endReason_});
      return;
    }
    written += bytes;
    if (isReading) {
      complete(std::move(completion), std::nullopt);
    } else {
      outstandingSends_.push_back(std::move(completion));
    }
  }

  void receive(ReceiveCompletion completion) override {
    demand(!outstandingReceive_);
    outstandingReceive_ = std::move(completion);
    deliver();
  }

  // What the test does in the name of the network and of the peer.

  void becomeReady() { becomes(platform::ConnectionState::ready); }

  /// Bytes from the peer; each call is one read.
  void arrive(std::string_view bytes) {
    arrived_.emplace_back(bytes);
    deliver();
  }

  /// The peer closes its end.
  void closeByPeer() { end("the peer closed the connection"); }

  /// The network breaks.
  void fail() {
    end("the network broke");
    becomes(platform::ConnectionState::failed);
  }

  /// The peer takes what has been written; oldest first.
  void completeSends(std::size_t count) {
    for (; count > 0 && !outstandingSends_.empty(); --count) {
      complete(std::move(outstandingSends_.front()), std::nullopt);
      outstandingSends_.pop_front();
    }
  }

  /// Lets go of everybody who waits, as the end of the world does: they may hold this object.
  void abandon() {
    stateHandler_ = nullptr;
    outstandingSends_.clear();
    outstandingReceive_.reset();
  }

  std::size_t outstandingSendCount() const { return outstandingSends_.size(); }
  bool hasOutstandingReceive() const { return outstandingReceive_.has_value(); }
  bool hasStateHandler() const { return stateHandler_ != nullptr; }

  bool isStarted = false;
  bool isCancelled = false;
  /// Whether the peer takes each message at once; else sends stay outstanding.
  bool isReading = true;
  /// Everything that was sent.
  std::string written;

 private:
  static void demand(bool condition) {
    if (!condition) {
      std::abort();
    }
  }

  void becomes(platform::ConnectionState state) {
    queue_.async([self = shared_from_this(), state] {
      if (self->stateHandler_) {
        self->stateHandler_(state);
      }
      if (state == platform::ConnectionState::cancelled) {
        self->stateHandler_ = nullptr;
      }
    });
  }

  void complete(SendCompletion completion, std::optional<platform::NetworkError> error) {
    queue_.async(
        [completion = std::move(completion), error = std::move(error)] { completion(error); });
  }

  void deliver() {
    if (!outstandingReceive_ || (arrived_.empty() && !endReason_)) {
      return;
    }
    ReceiveCompletion completion = *std::move(outstandingReceive_);
    outstandingReceive_.reset();
    if (arrived_.empty()) {
      queue_.async([completion = std::move(completion),
                    error = platform::NetworkError{*endReason_}] { completion("", error); });
      return;
    }
    queue_.async([completion = std::move(completion), bytes = std::move(arrived_.front())] {
      completion(bytes, std::nullopt);
    });
    arrived_.pop_front();
  }

  void end(const std::string& reason) {
    if (!endReason_) {
      endReason_ = reason;
    }
    while (!outstandingSends_.empty()) {
      complete(std::move(outstandingSends_.front()), platform::NetworkError{reason});
      outstandingSends_.pop_front();
    }
    deliver();
  }

  FakeSerialQueue& queue_;
  StateHandler stateHandler_;
  std::deque<std::string> arrived_;
  std::deque<SendCompletion> outstandingSends_;
  std::optional<ReceiveCompletion> outstandingReceive_;
  std::optional<std::string> endReason_;
};

}  // namespace tarnix::fakes
