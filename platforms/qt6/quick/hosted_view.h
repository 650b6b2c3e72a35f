#pragma once

#include <QString>
#include <memory>

#include "probe/platform/view_controller.h"

class QObject;

/// What a window, popup or item is to the one who declared it in QML. Main thread.
namespace tarnix::qt6::hosted_view {

/// Whether `object` was declared in QML, in whatever file.
bool isDeclared(const QObject& object);

/// Whether the outermost thing of a file of the application's own, or of a component with a name.
bool isOfApplicationsType(const QObject& object);

/// The name of the type that its author gave it: that of the file or component of which it is the
/// outermost thing, else the name of the toolkit's type.
QString typeName(const QObject& object);

/// Empty when there is none.
QString title(const QObject& object);

/// It goes by its title, else by its type. It must not outlive `object`.
std::unique_ptr<platform::ViewController> controllerOf(const QObject& object);

}  // namespace tarnix::qt6::hosted_view
