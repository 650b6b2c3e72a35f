#pragma once

#include <pthread.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "probe/platform/serial_queue.h"

namespace asio {
class io_context;
}

namespace tarnix::linux_platform {

/// The one thread on which the probe's sockets are served. It is started when it is first needed,
/// takes no signals, and ends when the host exits. One instance, never destroyed. Any thread.
class ServerThread final : public platform::SerialQueue {
 public:
  static ServerThread& shared();

  /// Starts the thread unless it runs. Returns an empty string, or why it cannot run.
  std::string start();

  /// Closures given before the thread can run, and after the host's exit has begun, are dropped.
  void async(std::function<void()> closure) override;

  /// Only after `start` succeeded.
  asio::io_context& context();

 private:
  ServerThread();
  ~ServerThread() override;

  static void* threadEntry(void* self);
  static void handleExit();

  std::mutex mutex_;
  std::unique_ptr<asio::io_context> context_;
  std::atomic<bool> isRunning_ = false;
  bool hasEnded_ = false;
  pthread_t thread_{};
};

}  // namespace tarnix::linux_platform
