#pragma once

#include <QThread>
#include <atomic>
#include <memory>
#include <vector>

namespace trace_host {

/// Threads that make one request after the other, each numbered, from before there is an event
/// loop. Each of them ends after so many, or when it is told to.
class SteadyRequests {
 public:
  SteadyRequests(int threadCount, int count);
  ~SteadyRequests();
  SteadyRequests(const SteadyRequests&) = delete;
  SteadyRequests& operator=(const SteadyRequests&) = delete;

  /// Returns when the last answers are there.
  void stop();

 private:
  void waitForEnd();
  void run(int thread, int count);

  std::atomic<bool> isOver_ = false;
  std::vector<std::unique_ptr<QThread>> threads_;
};

}  // namespace trace_host
