#include "platforms/qt6/base/screen_watch.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

#include "platforms/qt6/base/part_loader.h"
#include "platforms/qt6/base/window_order.h"
#include "platforms/qt6/shared/class_origin.h"
#include "platforms/qt6/shared/plain_controller.h"

namespace tarnix::qt6 {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// No frame for so long: what was moving has come to rest.
constexpr milliseconds stillness{120};

// Some scenes are never still.
constexpr milliseconds longestWait{600};

// Widgets say by events what comes and goes, and a cursor that blinks is a frame too.
constexpr milliseconds betweenLooksAtWidgets{2'000};
static_assert(betweenLooksAtWidgets > longestWait);

enum class Notice { none, frame, change };

Notice noticeOf(const QObject& receiver, const QEvent& event) {
  switch (event.type()) {
    case QEvent::UpdateRequest:
      return Notice::frame;
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Expose:
    case QEvent::WindowActivate:
    case QEvent::WindowTitleChange:
    case QEvent::ZOrderChange:
      return receiver.isWidgetType() || receiver.isWindowType() ? Notice::change : Notice::none;
    default:
      return Notice::none;
  }
}

}  // namespace

/// A filter on the application. No child of the application object, so that the host finds nothing
/// among its children.
class ScreenWatch::Events : public QObject {
 public:
  explicit Events(ScreenWatch& watch) : watch_(watch) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::CoarseTimer);
    QObject::connect(&timer_, &QTimer::timeout, this, [this] { timeHasPassed(); });
    qGuiApp->installEventFilter(this);
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this] { change(); });
    change();
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (noticeOf(*receiver, *event)) {
      case Notice::frame:
        frame();
        break;
      case Notice::change:
        change();
        break;
      case Notice::none:
        break;
    }
    return false;
  }

 private:
  void frame() {
    lastFrame_ = Clock::now();
    if (!timer_.isActive()) {
      firstFrame_ = lastFrame_;
      timer_.start(PartLoader::shared().hasScenes() ? stillness : betweenLooksAtWidgets);
    }
  }

  void change() {
    if (!isChanged_) {
      isChanged_ = true;
      timer_.start(milliseconds(0));
    }
  }

  void timeHasPassed() {
    const Clock::time_point now = Clock::now();
    if (!isChanged_ && now - lastFrame_ < stillness && now - firstFrame_ < longestWait) {
      timer_.start(std::chrono::ceil<milliseconds>(lastFrame_ + stillness - now));
      return;
    }
    isChanged_ = false;
    watch_.look();
  }

  ScreenWatch& watch_;
  QTimer timer_;
  Clock::time_point firstFrame_;
  Clock::time_point lastFrame_;
  bool isChanged_ = false;
};

ScreenWatch& ScreenWatch::shared() {
  static ScreenWatch& instance = *new ScreenWatch;
  return instance;
}

ScreenWatch::ScreenWatch()
    : viewDidAppear_([](platform::ViewController&, bool) {},
                     [this] {
                       isWanted_ = true;
                       listen();
                     }) {}

void ScreenWatch::start() {
  if (isWanted_) {
    listen();
  }
}

void ScreenWatch::stop() {
  events_.reset();
  history_.forget();
}

void ScreenWatch::listen() {
  if (events_ == nullptr &&
      qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
    events_ = std::make_unique<Events>(*this);
  }
}

void ScreenWatch::look() {
  try {
    PartLoader::shared().update();
    ScreenChain chain;
    QWindow* const window = WindowOrder::shared().keyWindow();
    if (window != nullptr && window->isExposed() &&
        !PartLoader::shared().addScreens(*window, chain)) {
      addScreens(*window, chain);
    }
    for (const Screen& screen : history_.appeared(std::move(chain))) {
      if (screen.object != nullptr) {
        viewDidAppear_(*screen.finder->controllerOf(*screen.object), false);
      }
    }
  } catch (...) {
    // Out of memory: the screen is seen the next time.
  }
}

bool ScreenWatch::addScreens(QWindow& window, ScreenChain& chain) {
  chain.push_back({&window, this, {}, true, isToolkitClass(window)});
  return true;
}

std::unique_ptr<platform::ViewController> ScreenWatch::controllerOf(QObject& object) {
  return std::make_unique<PlainController>(object);
}

}  // namespace tarnix::qt6
