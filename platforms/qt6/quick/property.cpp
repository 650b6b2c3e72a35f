#include "platforms/qt6/quick/property.h"

#include <QMetaProperty>
#include <QVariant>

namespace tarnix::qt6 {

Property::Property(const QMetaObject& metaObject, const char* name)
    : index_(metaObject.indexOfProperty(name)) {
  if (index_ < 0) {
    return;
  }
  const QMetaProperty property = metaObject.property(index_);
  const QMetaType type = property.metaType();
  if (!property.isReadable()) {
    index_ = -1;
  } else if (property.isEnumType()) {
    // Enumerations are of four bytes unless their author says otherwise.
    type_ = type.sizeOf() == sizeof(int) ? Type::enumeration : Type::other;
  } else if (type.id() == QMetaType::QString) {
    type_ = Type::string;
  } else if (type.id() == QMetaType::Bool) {
    type_ = Type::boolean;
  } else if (type.id() == QMetaType::Int) {
    type_ = Type::integer;
  } else if (type.id() == QMetaType::Double) {
    type_ = Type::real;
  } else if (type.flags().testFlag(QMetaType::PointerToQObject)) {
    type_ = Type::object;
  } else {
    type_ = Type::other;
  }
}

void Property::readInto(const QObject& object, void* value) const {
  int status = -1;
  void* arguments[] = {value, nullptr, &status};
  // Reading changes nothing, but the call is one for all accesses.
  QMetaObject::metacall(const_cast<QObject*>(&object), QMetaObject::ReadProperty, index_,
                        arguments);
}

QString Property::string(const QObject& object) const {
  QString result;
  if (type_ == Type::string) {
    readInto(object, &result);
  } else if (type_ == Type::other) {
    // A property that QML declares without a type.
    const QVariant value = object.metaObject()->property(index_).read(&object);
    if (value.typeId() == QMetaType::QString) {
      result = value.toString();
    }
  }
  return result;
}

std::optional<double> Property::number(const QObject& object) const {
  if (type_ == Type::real) {
    double result = 0;
    readInto(object, &result);
    return result;
  }
  if (type_ == Type::integer || type_ == Type::enumeration) {
    int result = 0;
    readInto(object, &result);
    return result;
  }
  return std::nullopt;
}

int Property::integer(const QObject& object) const {
  int result = 0;
  if (type_ == Type::integer || type_ == Type::enumeration) {
    readInto(object, &result);
  }
  return result;
}

bool Property::boolean(const QObject& object) const {
  bool result = false;
  if (type_ == Type::boolean) {
    readInto(object, &result);
  }
  return result;
}

QObject* Property::object(const QObject& object) const {
  QObject* result = nullptr;
  if (type_ == Type::object) {
    readInto(object, &result);
  }
  return result;
}

}  // namespace tarnix::qt6
