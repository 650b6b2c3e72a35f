#include "platforms/linux/connection_acceptor.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <cerrno>
#include <chrono>
#include <utility>

#include "platforms/linux/fork_guard.h"
#include "platforms/linux/server_thread.h"

namespace tarnix::linux_platform {

namespace {

/// How long a shortage of descriptors or memory is given to pass: waiting for the socket instead
/// would return at once, over and over.
constexpr std::chrono::milliseconds shortagePause{200};

enum class AcceptError { passing, shortage, fatal };

AcceptError classify(int error) {
  switch (error) {
    case EMFILE:
    case ENFILE:
    case ENOBUFS:
    case ENOMEM:
    case EPERM:
      return AcceptError::shortage;
    case EBADF:
    case EFAULT:
    case EINVAL:
    case ENOTSOCK:
    case EOPNOTSUPP:
      return AcceptError::fatal;
    default:
      // EAGAIN, and what went wrong with one connection that nobody has seen yet.
      return AcceptError::passing;
  }
}

class AsioAcceptor final : public ConnectionAcceptor,
                           public std::enable_shared_from_this<AsioAcceptor> {
 public:
  AsioAcceptor(ServerThread& thread, AcceptHandler onAccept, FailureHandler onFailure)
      : acceptor_(thread.context()),
        pause_(thread.context()),
        onAccept_(std::move(onAccept)),
        onFailure_(std::move(onFailure)) {}

  bool open(Descriptor socket, const asio::ip::tcp& protocol) {
    asio::error_code error;
    acceptor_.assign(protocol, socket.get(), error);
    if (error) {
      return false;
    }
    fork_guard::closeInChild(socket.release());
    return true;
  }

  bool listen() { return ::listen(acceptor_.native_handle(), SOMAXCONN) == 0; }

  void start() override {
    if (!listen()) {
      fail();
      return;
    }
    waitForConnection();
  }

  void stop() override {
    onAccept_ = nullptr;
    onFailure_ = nullptr;
    close();
  }

 private:
  void close() {
    if (acceptor_.is_open()) {
      fork_guard::forget(acceptor_.native_handle());
    }
    asio::error_code ignored;
    acceptor_.close(ignored);
    pause_.cancel();
  }

  void fail() {
    close();
    onAccept_ = nullptr;
    if (const FailureHandler handler = std::exchange(onFailure_, nullptr)) {
      handler();
    }
  }

  void waitForConnection() {
    acceptor_.async_wait(asio::ip::tcp::acceptor::wait_read,
                         [self = shared_from_this()](const asio::error_code& error) {
                           if (!self->acceptor_.is_open()) {
                             return;
                           }
                           if (error) {
                             self->fail();
                             return;
                           }
                           self->accept();
                         });
  }

  void accept() {
    // Not asio's accept: its descriptors would stay open in the host's children.
    Descriptor connection(
        ::accept4(acceptor_.native_handle(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    const AcceptError error = connection.isOpen() ? AcceptError::passing : classify(errno);
    if (error == AcceptError::fatal) {
      fail();
      return;
    }
    if (error == AcceptError::shortage) {
      pause_.expires_after(shortagePause);
      pause_.async_wait([self = shared_from_this()](const asio::error_code&) {
        if (self->acceptor_.is_open()) {
          self->waitForConnection();
        }
      });
      return;
    }
    waitForConnection();
    if (connection.isOpen()) {
      onAccept_(std::move(connection));
    }
  }

  asio::ip::tcp::acceptor acceptor_;
  asio::steady_timer pause_;
  AcceptHandler onAccept_;
  FailureHandler onFailure_;
};

}  // namespace

std::shared_ptr<ConnectionAcceptor> ConnectionAcceptor::make(ServerThread& thread,
                                                             Descriptor socket,
                                                             AcceptHandler onAccept,
                                                             FailureHandler onFailure) {
  int family = AF_INET;
  socklen_t size = sizeof(family);
  ::getsockopt(socket.get(), SOL_SOCKET, SO_DOMAIN, &family, &size);
  auto acceptor = std::make_shared<AsioAcceptor>(thread, std::move(onAccept), std::move(onFailure));
  if (!acceptor->open(std::move(socket),
                      family == AF_INET6 ? asio::ip::tcp::v6() : asio::ip::tcp::v4())) {
    return nullptr;
  }
  return acceptor;
}

}  // namespace tarnix::linux_platform
