#pragma once

#include <QMetaObject>
#include <string>

namespace tarnix::qt6 {

/// The class as a person wrote it: without the suffixes that QML adds to a type that it generates,
/// qualified names joined by dots.
std::string writtenClassName(const QMetaObject& metaObject);

/// Whether `metaObject` is of the class of this name or derived from it.
bool isDerivedFrom(const QMetaObject* metaObject, const char* className);

}  // namespace tarnix::qt6
