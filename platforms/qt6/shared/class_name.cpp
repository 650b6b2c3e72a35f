#include "platforms/qt6/shared/class_name.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace tarnix::qt6 {

std::string writtenClassName(const QMetaObject& metaObject) {
  std::string_view name = metaObject.className();
  name = name.substr(0, std::min(name.find("_QMLTYPE_"), name.find("_QML_")));
  std::string result;
  result.reserve(name.size());
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (name.compare(at, 2, "::") == 0) {
      result += '.';
      ++at;
    } else {
      result += name[at];
    }
  }
  return result;
}

bool isDerivedFrom(const QMetaObject* metaObject, const char* className) {
  for (; metaObject != nullptr; metaObject = metaObject->superClass()) {
    if (std::strcmp(metaObject->className(), className) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::qt6
