#include "platforms/linux/tcp_connection.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <asio/buffer.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

#include "platforms/linux/fork_guard.h"
#include "platforms/linux/server_thread.h"

namespace tarnix::linux_platform {

namespace {

using platform::Connection;
using platform::ConnectionState;
using platform::NetworkError;

/// What one receive completes with at most.
constexpr std::size_t maximumReceiveSize = 65'536;

class TcpConnection final : public Connection, public std::enable_shared_from_this<TcpConnection> {
 public:
  explicit TcpConnection(ServerThread& thread)
      : thread_(thread), socket_(std::make_unique<asio::ip::tcp::socket>(thread.context())) {}

  ~TcpConnection() override {
    if (fork_guard::isInChild()) {
      // Closing would take the locks of threads that are not here, and a descriptor that is the
      // child's own by now.
      static_cast<void>(socket_.release());
      return;
    }
    closeSocket();
  }

  bool open(Descriptor socket, const asio::ip::tcp& protocol) {
    asio::error_code error;
    socket_->assign(protocol, socket.get(), error);
    if (error) {
      return false;
    }
    fork_guard::closeInChild(socket.release());
    return true;
  }

  void setStateHandler(StateHandler handler) override { stateHandler_ = std::move(handler); }

  void start() override {
    thread_.async([self = shared_from_this()] { self->handleStart(); });
  }

  void cancel() override {
    thread_.async([self = shared_from_this()] { self->handleCancel(); });
  }

  void send(std::string bytes, SendCompletion completion) override {
    thread_.async([self = shared_from_this(), bytes = std::move(bytes),
                   completion = std::move(completion)]() mutable {
      self->handleSend({std::move(bytes), std::move(completion)});
    });
  }

  void receive(ReceiveCompletion completion) override {
    thread_.async([self = shared_from_this(), completion = std::move(completion)]() mutable {
      self->handleReceive(std::move(completion));
    });
  }

 private:
  enum class Phase { idle, ready, failed, cancelled };

  struct Outgoing {
    std::string bytes;
    SendCompletion completion;
  };

  // From here on everything runs on the server thread.

  bool isOver() const { return phase_ == Phase::failed || phase_ == Phase::cancelled; }

  void handleStart() {
    if (phase_ != Phase::idle) {
      return;
    }
    phase_ = Phase::ready;
    notify(ConnectionState::ready);
    writeNext();
    readNext();
  }

  void handleCancel() {
    if (phase_ == Phase::cancelled) {
      return;
    }
    phase_ = Phase::cancelled;
    endWork({"the connection was cancelled"});
    notify(ConnectionState::cancelled);
    stateHandler_ = nullptr;
  }

  void handleSend(Outgoing outgoing) {
    if (isOver()) {
      outgoing.completion(NetworkError{"the connection is over"});
      return;
    }
    outgoing_.push_back(std::move(outgoing));
    if (outgoing_.size() == 1) {
      writeNext();
    }
  }

  void handleReceive(ReceiveCompletion completion) {
    if (isOver()) {
      completion({}, NetworkError{"the connection is over"});
      return;
    }
    receiveCompletion_ = std::move(completion);
    readNext();
  }

  void writeNext() {
    if (phase_ != Phase::ready || outgoing_.empty()) {
      return;
    }
    // As much as the system takes; left to itself the library goes by 64 KiB.
    const auto rest = [size = outgoing_.front().bytes.size()](const asio::error_code& error,
                                                              std::size_t done) {
      return error ? 0 : size - done;
    };
    asio::async_write(*socket_, asio::buffer(outgoing_.front().bytes), rest,
                      [self = shared_from_this()](const asio::error_code& error, std::size_t) {
                        self->handleWritten(error);
                      });
  }

  void handleWritten(const asio::error_code& error) {
    if (phase_ != Phase::ready) {
      return;
    }
    if (error) {
      fail(error);
      return;
    }
    const SendCompletion completion = std::move(outgoing_.front().completion);
    outgoing_.pop_front();
    writeNext();
    completion(std::nullopt);
  }

  void readNext() {
    if (phase_ != Phase::ready || !receiveCompletion_) {
      return;
    }
    input_.resize(maximumReceiveSize);
    socket_->async_read_some(
        asio::buffer(input_),
        [self = shared_from_this()](const asio::error_code& error, std::size_t size) {
          self->handleRead(error, size);
        });
  }

  void handleRead(const asio::error_code& error, std::size_t size) {
    if (phase_ != Phase::ready) {
      return;
    }
    if (error && error != asio::error::eof) {
      fail(error);
      return;
    }
    const ReceiveCompletion completion = std::exchange(receiveCompletion_, nullptr);
    if (error) {
      // The peer sends no more, but may still read what it is sent.
      completion({}, NetworkError{"the peer closed the connection"});
      return;
    }
    completion(std::string(input_.data(), size), std::nullopt);
  }

  void fail(const asio::error_code& error) {
    phase_ = Phase::failed;
    endWork({error.message()});
    notify(ConnectionState::failed);
  }

  void endWork(const NetworkError& error) {
    closeSocket();
    if (const ReceiveCompletion completion = std::exchange(receiveCompletion_, nullptr)) {
      completion({}, error);
    }
    const std::deque<Outgoing> unsent = std::exchange(outgoing_, {});
    for (const Outgoing& outgoing : unsent) {
      outgoing.completion(error);
    }
  }

  void closeSocket() {
    if (socket_->is_open()) {
      fork_guard::forget(socket_->native_handle());
    }
    asio::error_code ignored;
    socket_->close(ignored);
  }

  void notify(ConnectionState state) {
    if (stateHandler_) {
      // A copy: the handler may be let go of while it runs.
      const StateHandler handler = stateHandler_;
      handler(state);
    }
  }

  ServerThread& thread_;
  std::unique_ptr<asio::ip::tcp::socket> socket_;
  StateHandler stateHandler_;
  Phase phase_ = Phase::idle;
  /// The first one is being written.
  std::deque<Outgoing> outgoing_;
  ReceiveCompletion receiveCompletion_;
  std::vector<char> input_;
};

}  // namespace

std::shared_ptr<Connection> makeTcpConnection(ServerThread& thread, Descriptor socket) {
  int family = AF_INET;
  socklen_t size = sizeof(family);
  ::getsockopt(socket.get(), SOL_SOCKET, SO_DOMAIN, &family, &size);
  auto connection = std::make_shared<TcpConnection>(thread);
  if (!connection->open(std::move(socket),
                        family == AF_INET6 ? asio::ip::tcp::v6() : asio::ip::tcp::v4())) {
    return nullptr;
  }
  return connection;
}

}  // namespace tarnix::linux_platform
