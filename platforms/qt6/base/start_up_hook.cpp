#include "platforms/qt6/base/start_up_hook.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>
#include <utility>

namespace tarnix::qt6::start_up_hook {

namespace {

struct Handlers {
  std::function<void()> onStart;
  std::function<void()> onStop;
};

Handlers& handlers() {
  static Handlers& instance = *new Handlers;
  return instance;
}

void applicationStops() { handlers().onStop(); }

void applicationStarts() {
  // The toolkit forgets this one with each application object.
  qAddPostRoutine(applicationStops);
  handlers().onStart();
}

void applicationIsMade() {
  QCoreApplication* const application = QCoreApplication::instance();
  if (application->thread() == QThread::currentThread()) {
    applicationStarts();
  } else {
    // The module was loaded late, by another thread.
    QMetaObject::invokeMethod(application, applicationStarts, Qt::QueuedConnection);
  }
}

}  // namespace

void install(std::function<void()> onStart, std::function<void()> onStop) {
  handlers() = {std::move(onStart), std::move(onStop)};
  qAddPreRoutine(applicationIsMade);
}

}  // namespace tarnix::qt6::start_up_hook
