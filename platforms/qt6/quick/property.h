#pragma once

#include <QMetaObject>
#include <QString>
#include <optional>

class QObject;

namespace tarnix::qt6 {

/// A property of a class, looked up once and then read without boxing. Main thread. Reading from an
/// object of a class that is not derived from the one that it was looked up in is an error.
class Property {
 public:
  Property() = default;
  Property(const QMetaObject& metaObject, const char* name);

  bool exists() const { return index_ >= 0; }

  /// These are absent, empty or false when the class has no such property of a fitting type.
  QString string(const QObject& object) const;
  std::optional<double> number(const QObject& object) const;
  /// Of whole numbers and enumerations; zero when there is none.
  int integer(const QObject& object) const;
  bool boolean(const QObject& object) const;
  QObject* object(const QObject& object) const;

 private:
  enum class Type { none, string, boolean, integer, real, enumeration, object, other };

  void readInto(const QObject& object, void* value) const;

  int index_ = -1;
  Type type_ = Type::none;
};

}  // namespace tarnix::qt6
