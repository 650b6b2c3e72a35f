#pragma once

#include <QObject>

#include "platforms/qt6/shared/class_origin.h"
#include "probe/platform/view_controller.h"

namespace tarnix::qt6 {

/// The controller of a screen that a class of the host's makes: a widget, or a window that is
/// painted by itself.
class PlainController : public platform::ViewController {
 public:
  explicit PlainController(const QObject& object) : object_(object) {}

  std::string className() const override { return dynamicClassName(object_); }
  std::optional<std::string> title() const override {
    const QVariant title = object_.property("title");
    const QString text = (title.isValid() ? title : object_.property("windowTitle")).toString();
    return text.isEmpty() ? std::nullopt : std::optional(text.toStdString());
  }
  std::string bundlePath() const override { return bundlePathOf(object_); }

 private:
  const QObject& object_;
};

}  // namespace tarnix::qt6
