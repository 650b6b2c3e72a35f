#include "tests/integration/qt6_screen/screen_table.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QQmlApplicationEngine>
#include <QWidget>
#include <QWindow>

#include "probe/platform/platform.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/integration/qt6_screen/widget_pages.h"

namespace tarnix::integration {

namespace {

/// Layouts, views and popups settle over a few turns of the loop.
void settle() {
  constexpr auto longEnough = std::chrono::milliseconds(300);
  contract::letPass(longEnough);
}

bool isAnyWindowActive() {
  return QGuiApplication::focusWindow() != nullptr && QGuiApplication::focusWindow()->isExposed();
}

}  // namespace

std::vector<std::string> screenLines() {
  namespace traits = platform::accessibility_traits;
  std::vector<std::string> lines;
  for (const auto& element : ProbeAccessibilityScanner::scanAll()) {
    std::string line = std::string(element.type) + " " + element.label;
    if (element.value) {
      line += " {" + *element.value + "}";
    }
    line += element.isTextField ? " field" : "";
    line += (element.traits & traits::selected) != 0 ? " selected" : "";
    line += (element.traits & traits::notEnabled) != 0 ? " disabled" : "";
    lines.push_back(std::move(line));
  }
  return lines;
}

std::vector<std::string> linesWith(const std::string& part) {
  std::vector<std::string> lines = screenLines();
  std::erase_if(lines,
                [&part](const std::string& line) { return line.find(part) == std::string::npos; });
  return lines;
}

std::vector<ProbeAccessibilityScanner::Element> elementsLabelled(const std::string& label) {
  return ProbeAccessibilityScanner::find(label, true);
}

struct ShownQmlFile::Engine {
  QQmlApplicationEngine engine;
};

ShownQmlFile::ShownQmlFile(const std::string& file) : engine_(new Engine) {
  engine_->engine.load(
      QUrl::fromLocalFile(TARNIX_QML_DIRECTORY "/" + QString::fromStdString(file)));
  EXPECT_FALSE(engine_->engine.rootObjects().isEmpty()) << file;
  EXPECT_TRUE(contract::pumpUntil(isAnyWindowActive));
  settle();
}

ShownQmlFile::~ShownQmlFile() { delete engine_; }

void ShownQmlFile::open(const std::string& popup) {
  QObject* const root = engine_->engine.rootObjects().value(0);
  ASSERT_NE(root, nullptr);
  ASSERT_TRUE(
      QMetaObject::invokeMethod(root, "show", Q_ARG(QVariant, QString::fromStdString(popup))));
  settle();
}

ShownWidgetPage::ShownWidgetPage(const std::string& page) {
  EXPECT_TRUE(showWidgetPage(QString::fromStdString(page))) << page;
  EXPECT_TRUE(contract::pumpUntil(isAnyWindowActive));
  settle();
}

ShownWidgetPage::~ShownWidgetPage() {
  while (!QApplication::topLevelWidgets().isEmpty()) {
    delete QApplication::topLevelWidgets().constFirst();
  }
}

}  // namespace tarnix::integration
