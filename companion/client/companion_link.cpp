#include "companion/client/companion_link.h"

#include <fmt/format.h>

#include <asio/buffer.hpp>
#include <asio/connect.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "probe/link/companion_framer.h"

namespace tarnix::companion {
namespace {

using asio::ip::tcp;
using Kind = ClientError::Kind;

// A full sync of a host that is busy has hundreds of kilobytes, a picture has megabytes.
constexpr std::size_t readSize = 256 * 1024;

ClientError unreachable(const CompanionEndpoint& endpoint, const std::error_code& error) {
  if (error == asio::error::connection_refused) {
    return {Kind::unreachable,
            fmt::format("nothing listens on port {} of {}. See which applications can be reached "
                        "with `tarnix list`, or start one with `tarnix run APP`.",
                        endpoint.port, endpoint.host)};
  }
  return {Kind::unreachable, fmt::format("{} port {} cannot be reached: {}. Check --host and "
                                         "--port; `tarnix list` shows what can be reached.",
                                         endpoint.host, endpoint.port, error.message())};
}

enum class WhenTimeIsOver { stopWaiting, closeSocket };

}  // namespace

struct CompanionLink::Implementation {
  explicit Implementation(CompanionEndpoint where)
      : endpoint(std::move(where)), readBuffer(readSize) {}

  /// Runs one asynchronous operation until its end or the deadline. `start` gets the completion
  /// handler. Answers with nothing when the time was over first. An operation of several steps is
  /// ended by closing the socket: there may be no step under way that could be cancelled.
  template <class Start>
  std::optional<std::error_code> finish(Deadline deadline, WhenTimeIsOver action, Start start) {
    std::optional<std::error_code> result;
    start([&result](const std::error_code& error) { result = error; });
    context.restart();
    context.run_until(deadline);
    if (result) {
      return result;
    }
    std::error_code ignored;
    if (action == WhenTimeIsOver::closeSocket) {
      socket.close(ignored);
    } else {
      socket.cancel(ignored);
    }
    context.restart();
    context.run();
    // What arrived just before the waiting was ended must not be lost.
    const bool arrived = action == WhenTimeIsOver::stopWaiting && result == std::error_code();
    return arrived ? result : std::nullopt;
  }

  ClientError dropped(const std::error_code& error) const {
    const bool orderly = error == asio::error::eof;
    return {Kind::dropped,
            fmt::format("the application on port {} closed the connection{}. It has ended, or "
                        "another companion has taken its place; see `tarnix list`.",
                        endpoint.port, orderly ? "" : " (" + error.message() + ")")};
  }

  CompanionEndpoint endpoint;
  asio::io_context context{1};
  tcp::socket socket{context};
  CompanionFramer framer;
  std::vector<char> readBuffer;
  /// Read, and not yet handed out as a body.
  std::size_t bytesOfNextBody = 0;
};

CompanionLink::CompanionLink(std::unique_ptr<Implementation> implementation)
    : implementation_(std::move(implementation)) {}
CompanionLink::CompanionLink(CompanionLink&&) noexcept = default;
CompanionLink& CompanionLink::operator=(CompanionLink&&) noexcept = default;
CompanionLink::~CompanionLink() = default;

Outcome<CompanionLink> CompanionLink::open(const CompanionEndpoint& endpoint, Deadline deadline) {
  auto implementation = std::make_unique<Implementation>(endpoint);
  Implementation& link = *implementation;
  tcp::resolver resolver(link.context);
  std::error_code resolveError;
  const auto addresses = resolver.resolve(endpoint.host, std::to_string(endpoint.port),
                                          tcp::resolver::numeric_service, resolveError);
  if (resolveError) {
    return unreachable(endpoint, resolveError);
  }
  const std::optional<std::error_code> error =
      link.finish(deadline, WhenTimeIsOver::closeSocket, [&](auto done) {
        asio::async_connect(
            link.socket, addresses,
            [done](const std::error_code& result, const tcp::endpoint&) mutable { done(result); });
      });
  if (!error) {
    return ClientError{Kind::noAnswer,
                       fmt::format("no connection to {} port {} came about in time. Check "
                                   "--host and --port, or allow more with --timeout.",
                                   endpoint.host, endpoint.port)};
  }
  if (*error) {
    return unreachable(endpoint, *error);
  }
  std::error_code ignored;
  link.socket.set_option(tcp::no_delay(true), ignored);
  return CompanionLink(std::move(implementation));
}

Failure CompanionLink::writeBody(std::string_view body, Deadline deadline) {
  Implementation& link = *implementation_;
  const std::optional<std::string> frame = CompanionFramer::handleOutput(body);
  if (!frame) {
    return ClientError{Kind::notUnderstood, "the command is too large for one message."};
  }
  const std::optional<std::error_code> error =
      link.finish(deadline, WhenTimeIsOver::closeSocket, [&](auto done) {
        asio::async_write(
            link.socket, asio::buffer(*frame),
            [done](const std::error_code& result, std::size_t) mutable { done(result); });
      });
  if (!error) {
    return ClientError{Kind::noAnswer,
                       fmt::format("the application on port {} takes no more commands: its main "
                                   "thread seems busy. Try again later, or allow more time "
                                   "with --timeout.",
                                   link.endpoint.port)};
  }
  return *error ? Failure(link.dropped(*error)) : std::nullopt;
}

Outcome<std::string> CompanionLink::readBody(Deadline deadline) {
  Implementation& link = *implementation_;
  while (true) {
    if (std::optional<std::string> body = link.framer.nextBody()) {
      link.bytesOfNextBody -= CompanionFramer::headerSize + body->size();
      return *std::move(body);
    }
    std::size_t count = 0;
    const std::optional<std::error_code> error =
        link.finish(deadline, WhenTimeIsOver::stopWaiting, [&](auto done) {
          link.socket.async_read_some(
              asio::buffer(link.readBuffer),
              [done, &count](const std::error_code& result, std::size_t size) mutable {
                count = size;
                done(result);
              });
        });
    if (!error) {
      return ClientError{Kind::noAnswer,
                         fmt::format("nothing more came from the application on port {} in "
                                     "time: its main thread seems busy.",
                                     link.endpoint.port)};
    }
    if (*error) {
      return link.dropped(*error);
    }
    link.bytesOfNextBody += count;
    link.framer.handleInput({link.readBuffer.data(), count});
  }
}

bool CompanionLink::isInsideBody() const { return implementation_->bytesOfNextBody > 0; }

}  // namespace tarnix::companion
