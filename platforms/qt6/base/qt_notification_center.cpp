#include "platforms/qt6/base/qt_notification_center.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>
#include <utility>

#include "platforms/qt6/base/qt_main_queue.h"

namespace tarnix::qt6 {

namespace {

constexpr std::string_view didFinishLaunching = "UIApplicationDidFinishLaunchingNotification";

bool isAnyWindowExposed() {
  for (const QWindow* window : QGuiApplication::topLevelWindows()) {
    if (window->isExposed()) {
      return true;
    }
  }
  return false;
}

}  // namespace

/// A filter on the application until the first window is exposed. No child of the application
/// object, so that the host finds nothing among its children.
class QtNotificationCenter::LaunchWatch : public QObject {
 public:
  LaunchWatch(QGuiApplication& application, QtNotificationCenter& center) : center_(center) {
    if (isAnyWindowExposed()) {
      finish();
    } else {
      application.installEventFilter(this);
    }
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() == QEvent::Expose && receiver->isWindowType() &&
        static_cast<QWindow*>(receiver)->isExposed()) {
      qGuiApp->removeEventFilter(this);
      finish();
    }
    return false;
  }

 private:
  void finish() {
    QTimer::singleShot(0, this, [this] {
      center_.post(didFinishLaunching);
      center_.watch_ = nullptr;
      deleteLater();
    });
  }

  QtNotificationCenter& center_;
};

QtNotificationCenter& QtNotificationCenter::shared() {
  static QtNotificationCenter& instance = *new QtNotificationCenter;
  return instance;
}

void QtNotificationCenter::start() {
  auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
  if (application != nullptr && !hasLaunched_ && watch_ == nullptr) {
    watch_ = new LaunchWatch(*application, *this);
  }
}

void QtNotificationCenter::stop() { delete std::exchange(watch_, nullptr); }

void QtNotificationCenter::addObserver(std::string_view name, std::function<void()> observer) {
  const std::lock_guard lock(mutex_);
  observers_[std::string(name)].push_back(std::move(observer));
}

void QtNotificationCenter::post(std::string_view name) {
  hasLaunched_ = true;
  std::vector<std::function<void()>> observers;
  {
    const std::lock_guard lock(mutex_);
    if (const auto found = observers_.find(name); found != observers_.end()) {
      observers = found->second;
    }
  }
  for (std::function<void()>& observer : observers) {
    QtMainQueue::shared().async(std::move(observer));
  }
}

}  // namespace tarnix::qt6
