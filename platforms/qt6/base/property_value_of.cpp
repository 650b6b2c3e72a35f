#include "platforms/qt6/base/property_value_of.h"

#include <QDateTime>
#include <QDebug>
#include <QVariant>

namespace tarnix::qt6 {

namespace {

using platform::PropertyValue;

template <typename List>
PropertyValue arrayOf(const List& list) {
  PropertyValue::Array array;
  for (const auto& element : list) {
    array.elements.push_back(propertyValueOf(QVariant(element)));
  }
  return {std::move(array)};
}

template <typename Map>
PropertyValue dictionaryOf(const Map& map) {
  PropertyValue::Dictionary dictionary;
  for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
    dictionary.members.emplace_back(entry.key().toStdString(), propertyValueOf(entry.value()));
  }
  return {std::move(dictionary)};
}

PropertyValue dateOf(const QDateTime& date) {
  return {PropertyValue::Date(std::chrono::milliseconds(date.toMSecsSinceEpoch()))};
}

/// Sizes, rectangles, colours and the like.
PropertyValue otherOf(const QVariant& value) {
  QString description;
  if (value.canConvert<QString>() && !value.toString().isEmpty()) {
    description = value.toString();
  } else {
    QDebug(&description).nospace() << value;
  }
  return {PropertyValue::Other{description.trimmed().toStdString()}};
}

}  // namespace

PropertyValue propertyValueOf(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QChar:
      return {value.toString().toStdString()};
    case QMetaType::Bool:
      return {value.toBool()};
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
      return {std::int64_t{value.toLongLong()}};
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
      return {std::uint64_t{value.toULongLong()}};
    case QMetaType::Float:
    case QMetaType::Double:
      return {value.toDouble()};
    case QMetaType::QByteArray:
      return {PropertyValue::Data{value.toByteArray().toStdString()}};
    case QMetaType::QDateTime:
    case QMetaType::QDate:
      return value.toDateTime().isValid() ? dateOf(value.toDateTime()) : otherOf(value);
    case QMetaType::QStringList:
      return arrayOf(value.toStringList());
    case QMetaType::QVariantList:
      return arrayOf(value.toList());
    case QMetaType::QVariantMap:
      return dictionaryOf(value.toMap());
    case QMetaType::QVariantHash:
      return dictionaryOf(value.toHash());
    default:
      return otherOf(value);
  }
}

}  // namespace tarnix::qt6
