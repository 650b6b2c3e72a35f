#include "platforms/linux/server_thread.h"

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <optional>
#include <utility>

#include "platforms/linux/fork_guard.h"
#include "platforms/linux/guest_thread.h"

namespace tarnix::linux_platform {

namespace {

/// What a handler may take that runs while the host exits.
constexpr std::chrono::milliseconds exitTimeout{500};

}  // namespace

ServerThread& ServerThread::shared() {
  static ServerThread& instance = *new ServerThread;
  return instance;
}

ServerThread::ServerThread() = default;
ServerThread::~ServerThread() = default;

std::string ServerThread::start() {
  if (fork_guard::isInChild()) {
    return "the process was forked from its host";
  }
  const std::lock_guard lock(mutex_);
  if (isRunning_) {
    return {};
  }
  if (hasEnded_) {
    return "the host is exiting";
  }
  try {
    context_ = std::make_unique<asio::io_context>();
  } catch (const std::exception& error) {
    return error.what();
  }
  fork_guard::install();
  const std::optional<pthread_t> thread = startGuestThread("tarnix.server", threadEntry, this);
  if (!thread) {
    return "the system starts no thread";
  }
  thread_ = *thread;
  isRunning_ = true;
  std::atexit(handleExit);
  return {};
}

void ServerThread::async(std::function<void()> closure) {
  if (fork_guard::isInChild() || (!isRunning_ && !start().empty())) {
    return;
  }
  asio::post(*context_, std::move(closure));
}

asio::io_context& ServerThread::context() { return *context_; }

void* ServerThread::threadEntry(void* self) {
  asio::io_context& context = *static_cast<ServerThread*>(self)->context_;
  const auto work = asio::make_work_guard(context);
  while (!context.stopped()) {
    try {
      context.run();
    } catch (...) {
      // Memory ran out in a handler. The handler is lost, the host must not be.
    }
  }
  return nullptr;
}

void ServerThread::handleExit() {
  if (fork_guard::isInChild()) {
    return;
  }
  ServerThread& self = shared();
  {
    const std::lock_guard lock(self.mutex_);
    self.hasEnded_ = true;
    self.isRunning_ = false;
  }
  // Other code of the process is about to be taken down: no handler may run beside that.
  self.context_->stop();
  joinGuestThread(self.thread_, exitTimeout);
}

}  // namespace tarnix::linux_platform
