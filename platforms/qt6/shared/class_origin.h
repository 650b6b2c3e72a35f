#pragma once

#include <string>

class QObject;
struct QMetaObject;

namespace tarnix::qt6 {

/// The dynamic class of `object`, without namespaces. Classes for which the meta-object compiler
/// was not run have their own name here too, where the host keeps type information.
std::string dynamicClassName(const QObject& object);

/// Whether the class was made by the running host, as QML makes classes for its types, and not by a
/// compiler.
bool isMadeWhileRunning(const QMetaObject& metaObject);

/// Whether that class is one of the toolkit's own.
bool isToolkitClass(const QObject& object);

/// Where that class comes from. For one of the toolkit's own this contains "/usr/lib/" or
/// "/System/", for the application's and those of its private libraries neither, wherever in the
/// file system these are.
std::string bundlePathOf(const QObject& object);

}  // namespace tarnix::qt6
