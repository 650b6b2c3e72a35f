#include "platforms/qt6/base/qt_display.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QScreen>
#include <QSocketNotifier>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <set>
#include <utility>

namespace tarnix::qt6 {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double usualRefreshRate = 60;

double refreshRate() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  const double rate = screen == nullptr ? 0 : screen->refreshRate();
  // Some screens do not know theirs.
  return rate >= 1 && std::isfinite(rate) ? rate : usualRefreshRate;
}

Seconds now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

timespec toTimespec(Seconds duration) {
  const auto whole = std::chrono::duration_cast<std::chrono::nanoseconds>(duration).count();
  return {.tv_sec = whole / 1'000'000'000, .tv_nsec = whole % 1'000'000'000};
}

/// One timer of the system's that runs at the refresh rate. A timer of the toolkit's counts whole
/// milliseconds, which no refresh rate is, and would have to be set again for each frame.
class Link {
 public:
  explicit Link(platform::Display::Tick tick)
      : tick_(std::make_shared<platform::Display::Tick>(std::move(tick))),
        timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {
    all().insert(this);
    resume();
  }
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link() {
    all().erase(this);
    suspend();
    ::close(timer_);
  }

  static std::set<Link*>& all() {
    static std::set<Link*>& instance = *new std::set<Link*>;
    return instance;
  }

  void resume() {
    if (notifier_ != nullptr || timer_ < 0 || QCoreApplication::instance() == nullptr) {
      return;
    }
    notifier_ = new QSocketNotifier(timer_, QSocketNotifier::Read);
    QObject::connect(notifier_, &QSocketNotifier::activated, notifier_, [this] { showFrames(); });
    run();
  }

  void suspend() {
    if (QSocketNotifier* const notifier = std::exchange(notifier_, nullptr)) {
      notifier->setEnabled(false);
      notifier->disconnect();
      // This may be its own tick.
      notifier->deleteLater();
    }
  }

 private:
  void run() {
    rate_ = refreshRate();
    lastFrame_ = now();
    const timespec period = toTimespec(Seconds(1 / rate_));
    const itimerspec schedule{.it_interval = period, .it_value = period};
    ::timerfd_settime(timer_, 0, &schedule, nullptr);
  }

  void showFrames() {
    std::uint64_t frames = 0;
    if (::read(timer_, &frames, sizeof frames) != sizeof frames) {
      return;
    }
    // The loop was busy while all but the last of them passed.
    lastFrame_ += Seconds(static_cast<double>(frames) / rate_);
    const Seconds timestamp = lastFrame_;
    if (refreshRate() != rate_) {
      run();
    }
    const std::shared_ptr<platform::Display::Tick> tick = tick_;
    (*tick)(timestamp);
  }

  const std::shared_ptr<platform::Display::Tick> tick_;
  const int timer_;
  QSocketNotifier* notifier_ = nullptr;
  double rate_ = usualRefreshRate;
  Seconds lastFrame_{0};
};

class OwnedLink : public platform::DisplayLink {
 public:
  explicit OwnedLink(platform::Display::Tick tick) : link_(std::move(tick)) {}

 private:
  Link link_;
};

}  // namespace

QtDisplay& QtDisplay::shared() {
  static QtDisplay& instance = *new QtDisplay;
  return instance;
}

void QtDisplay::start() {
  for (Link* link : Link::all()) {
    link->resume();
  }
}

void QtDisplay::stop() {
  for (Link* link : Link::all()) {
    link->suspend();
  }
}

std::unique_ptr<platform::DisplayLink> QtDisplay::displayLink(Tick tick) {
  return std::make_unique<OwnedLink>(std::move(tick));
}

}  // namespace tarnix::qt6
