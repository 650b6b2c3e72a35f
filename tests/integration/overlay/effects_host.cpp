// An application of widgets or of Quick with the overlay in it, whose frames come when the test
// says so: then each effect can be caught at any moment.
//
//     tarnix_effects_host widgets|quick|composed|native|translucent|scrolled
//
// The last four are windows of widgets with a large part in the middle that comes to the screen in
// a way of its own: drawn by OpenGL, in a window of the system's own, with what lies behind seen
// through it, and after it was scrolled.
//
// Reads commands from standard input, one a line, and answers "ok" to each: "show EFFECT" starts
// one, "frame SECONDS" shows the overlay as it is that long after the first frame, "click" tells
// how often the button was clicked so far, "state" tells what of the window could be disturbed,
// "size WIDTH HEIGHT" makes the window that large, "pace FRAMES" shows so many frames at 60 a
// second and tells the processor time of each, "repaint FRAMES" does so while the application draws
// its window anew for each.

#include <QApplication>
#include <QBackingStore>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLabel>
#include <QLineEdit>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScrollBar>
#include <QSocketNotifier>
#include <QTimer>
#include <QVBoxLayout>
#include <ctime>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include "platforms/linux/preload/interposed_calls.h"
#include "platforms/linux/system_clock.h"
#include "platforms/qt6/base/host_services.h"
#include "platforms/qt6/base/part_loader.h"
#include "platforms/qt6/quick/quick_part.h"
#include "platforms/qt6/shared/overlay_pane.h"
#include "platforms/qt6/widgets/widgets_part.h"
#include "probe/overlay/probe_touch_overlay.h"
#include "probe/platform/platform.h"
#include "tests/fakes/fake_display.h"

namespace tarnix {
namespace {

constexpr int width = 400;
constexpr int height = 300;
// Frames are counted from any fixed start.
constexpr double firstFrame = 1000;

fakes::FakeDisplay& frames() {
  static fakes::FakeDisplay& instance = *new fakes::FakeDisplay;
  return instance;
}

void install() {
  qt6::PartLoader& loader = qt6::PartLoader::shared();
  const HostServices& services = qt6::installHostServices(nullptr);
  loader.start(&linux_platform::interposedCalls());
  loader.add(new qt6::WidgetsPart(loader));
  loader.add(&qt6::QuickPart::shared());
  platform::Platform platform;
  platform.application = services.application;
  platform.mainQueue = services.mainQueue;
  platform.clock = &linux_platform::SystemClock::shared();
  platform.display = &frames();
  platform.overlaySurfaces = services.overlaySurfaces;
  platform::setCurrent(platform);
}

/// What a test looks at from inside.
class TestWindow {
 public:
  virtual ~TestWindow() = default;

  virtual QWindow& window() = 0;
  virtual std::string state() = 0;
  /// Has the application draw its window anew.
  virtual void repaint() = 0;

  int clicks = 0;
};

class WidgetWindow : public TestWindow {
 public:
  explicit WidgetWindow(bool isTranslucent = false) {
    form_.setAttribute(Qt::WA_TranslucentBackground, isTranslucent);
    auto* const layout = new QVBoxLayout(&form_);
    layout->addWidget(&label_);
    layout->addWidget(&field_);
    layout->addWidget(&button_, 1);
    button_.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    form_.resize(width, height);
    form_.show();
    field_.setFocus();
    QObject::connect(&button_, &QPushButton::clicked, &form_, [this] { ++clicks; });
  }

  QWindow& window() override { return *form_.windowHandle(); }

  void repaint() override { form_.update(); }

  QWidget& form() { return form_; }

  std::string state() override {
    std::ostringstream text;
    const QRect area = button_.geometry();
    text << "focus=" << (form_.focusWidget() == &field_)
         << " hit=" << (form_.childAt(area.center()) == &button_)
         << " layout=" << form_.layout()->count() << " button=" << area.x() << "," << area.y()
         << "," << area.width() << "," << area.height() << " children=" << form_.children().size();
    return text.str();
  }

 private:
  QWidget form_;
  QLabel label_{"A form"};
  QLineEdit field_;
  QPushButton button_{"Press"};
};

/// A form whose middle is `part`.
class OddWindow : public WidgetWindow {
 public:
  explicit OddWindow(QWidget* part) {
    part->setParent(&form());
    part->setGeometry(form().rect().adjusted(20, 20, -20, -20));
    part->show();
  }
};

class Coloured : public QOpenGLWidget {
 protected:
  void paintGL() override {
    QOpenGLFunctions& functions = *context()->functions();
    functions.glClearColor(0.2F, 0.3F, 0.6F, 1);
    functions.glClear(GL_COLOR_BUFFER_BIT);
  }
};

std::unique_ptr<TestWindow> makeOddWindow(const std::string& kind) {
  if (kind == "composed") {
    return std::make_unique<OddWindow>(new Coloured);
  }
  if (kind == "native") {
    auto* const part = new QLabel("a window of its own");
    part->setAutoFillBackground(true);
    auto window = std::make_unique<OddWindow>(part);
    part->winId();
    return window;
  }
  if (kind == "scrolled") {
    auto* const part = new QPlainTextEdit;
    for (int line = 0; line < 100; ++line) {
      part->appendPlainText(QString("line %1 ").arg(line).repeated(9));
    }
    auto window = std::make_unique<OddWindow>(part);
    // One line after the other, as a person's wheel does: those that stay are moved.
    QTimer::singleShot(100, part, [part] {
      for (int line = 0; line < 30; ++line) {
        part->verticalScrollBar()->setValue(line);
        QCoreApplication::processEvents();
      }
    });
    return window;
  }
  return nullptr;
}

class QuickTestWindow : public TestWindow {
 public:
  QuickTestWindow() {
    QQmlComponent component(&engine_);
    component.setData(R"(
import QtQuick
Item {
  signal pressed()
  anchors.fill: parent
  Text { x: 12; y: 10; text: "A scene"; font.pixelSize: 13 }
  Rectangle {
    x: 12; y: 40; width: parent.width - 24; height: 30; border.color: "gray"
    TextInput { objectName: "field"; anchors.fill: parent; anchors.margins: 6; focus: true }
  }
  Rectangle {
    objectName: "button"; x: 12; y: 82; width: parent.width - 24; height: parent.height - 94
    color: "lightgray"; radius: 4
    TapHandler { onTapped: parent.parent.pressed() }
    Text { anchors.centerIn: parent; text: "Press"; font.pixelSize: 13 }
  }
})",
                      QUrl());
    content_ = qobject_cast<QQuickItem*>(component.create());
    window_.resize(width, height);
    content_->setParent(&window_);
    content_->setParentItem(window_.contentItem());
    content_->setSize(window_.size());
    QObject::connect(content_, SIGNAL(pressed()), &counter_, SLOT(start()));
    QObject::connect(&counter_, &QTimer::timeout, &window_, [this] { ++clicks; });
    counter_.setSingleShot(true);
    window_.show();
    window_.requestActivate();
    content_->findChild<QQuickItem*>("field")->forceActiveFocus();
  }

  QWindow& window() override { return window_; }

  void repaint() override {
    // The renderer draws no more than what has changed.
    content_->setOpacity(content_->opacity() < 1 ? 1 : 0.99);
  }

  std::string state() override {
    std::ostringstream text;
    auto* const button = content_->findChild<QQuickItem*>("button");
    text << "focus=" << (window_.activeFocusItem() == content_->findChild<QQuickItem*>("field"))
         << " hit=" << (window_.contentItem()->childAt(200, 200) == content_)
         << " button=" << button->x() << "," << button->y() << "," << button->width() << ","
         << button->height() << " objects=" << window_.findChildren<QObject*>().size()
         << " extent=" << window_.contentItem()->childrenRect().width() << ","
         << window_.contentItem()->childrenRect().height();
    return text.str();
  }

 private:
  QQmlEngine engine_;
  QQuickWindow window_;
  QQuickItem* content_ = nullptr;
  // A signal of QML's, as a slot that a program without a compiler of meta objects has.
  QTimer counter_;
};

/// What makes an application draw.
class DrawingCounter : public QObject {
 public:
  int count = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::Paint:
      case QEvent::UpdateRequest:
      case QEvent::UpdateLater:
      case QEvent::LayoutRequest:
        ++count;
        break;
      default:
        break;
    }
    return false;
  }
};

void letPass(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

/// What was asked to be drawn has come to the screen.
void waitForPicture() { letPass(60); }

const std::map<std::string, std::function<void()>>& effects() {
  using namespace ProbeTouchOverlay;
  static const std::map<std::string, std::function<void()>> all = {
      {"tap",
       [] {
         showTap({200, 150});
       }},
      {"swipe",
       [] {
         showSwipe({100, 200}, {300, 100});
       }},
      {"type",
       [] {
         showTypeText(platform::Point{200, 100});
       }},
      {"scan", [] { showScan(); }},
      {"capture", [] { showCaptureFlash(); }},
      {"data", [] { showDataPulse("cookies"); }},
      {"verify", [] { showVerifyResult(true, ""); }},
      {"fail", [] { showVerifyResult(false, ""); }},
      {"environment", [] { showEnvironmentSwitch("staging"); }},
  };
  return all;
}

/// Of all threads, in milliseconds.
double processorTime() {
  timespec time{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Shows so many frames and tells the processor time of one, in milliseconds.
std::string pace(int count, const std::function<void()>& beforeEach) {
  static double last = firstFrame;
  const double before = processorTime();
  for (int frame = 0; frame < count; ++frame) {
    last += 1 / 60.0;
    beforeEach();
    frames().showFrame(last);
    letPass(16);
  }
  std::ostringstream text;
  text << (processorTime() - before) / count;
  return text.str();
}

/// What the application does, and what of ours it has, while nothing is asked of it.
std::string rest(int milliseconds, TestWindow& window) {
  DrawingCounter counter;
  QCoreApplication::instance()->installEventFilter(&counter);
  letPass(milliseconds);
  std::ostringstream text;
  text << "drawn=" << counter.count << " frames=" << frames().linkCount() << " over="
       << (window.window().property(qt6::overlayPaneProperty).isValid() ? "something" : "nothing");
  return text.str();
}

std::string answer(const std::string& line, TestWindow& window) {
  std::istringstream words(line);
  std::string command;
  words >> command;
  std::string argument;
  words >> argument;
  if (command == "show") {
    effects().at(argument)();
  } else if (command == "frame") {
    frames().showFrame(firstFrame + std::stod(argument));
    waitForPicture();
  } else if (command == "open") {
    QWidget late;
    late.setGeometry(0, 0, 400, 300);
    late.show();
    // Nothing has painted it yet.
    frames().showFrame(firstFrame + std::stod(argument));
    QElapsedTimer patience;
    patience.start();
    while (late.backingStore()->size().isEmpty() && !patience.hasExpired(20'000)) {
      waitForPicture();
    }
    const QPaintDevice* const picture = late.backingStore()->paintDevice();
    return picture == nullptr
               ? "never painted"
               : static_cast<const QImage*>(picture)
                     ->pixelColor((QPointF(184, 110) * late.devicePixelRatioF()).toPoint())
                     .name()
                     .toStdString();
  } else if (command == "click") {
    letPass(50);
    return std::to_string(window.clicks);
  } else if (command == "state") {
    return window.state();
  } else if (command == "rest") {
    return rest(std::stoi(argument), window);
  } else if (command == "pace") {
    return pace(std::stoi(argument), [] {});
  } else if (command == "repaint") {
    return pace(std::stoi(argument), [&window] { window.repaint(); });
  } else if (command == "size") {
    int other = 0;
    words >> other;
    window.window().resize(std::stoi(argument), other);
    letPass(200);
  }
  return {};
}

}  // namespace
}  // namespace tarnix

int main(int argc, char** argv) {
  using namespace tarnix;
  install();
  QApplication application(argc, argv);
  application.setStyle("Fusion");
  // Pictures are compared.
  QApplication::setCursorFlashTime(0);
  const std::string kind = argc == 2 ? argv[1] : "widgets";
  std::unique_ptr<TestWindow> window = makeOddWindow(kind);
  if (kind == "quick") {
    window = std::make_unique<QuickTestWindow>();
  } else if (window == nullptr) {
    window = std::make_unique<WidgetWindow>(kind == "translucent");
  }
  QElapsedTimer patience;
  patience.start();
  while (!window->window().isExposed() && !patience.hasExpired(20'000)) {
    letPass(20);
  }
  letPass(200);
  std::cout << "ready " << window->window().winId() << std::endl;
  QSocketNotifier input(0, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
    std::string line;
    if (!std::getline(std::cin, line)) {
      QCoreApplication::quit();
      return;
    }
    std::cout << "ok " << answer(line, *window) << std::endl;
  });
  return QApplication::exec();
}
