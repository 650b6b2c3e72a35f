#include "platforms/qt6/base/qt_class_registry.h"

#include <dlfcn.h>
#include <link.h>

#include <QByteArray>
#include <QMetaType>
#include <string>
#include <vector>

namespace tarnix::qt6 {

namespace {

std::vector<std::string_view> partsOf(std::string_view name) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t dot = name.find('.');
    parts.push_back(name.substr(0, dot));
    if (dot == std::string_view::npos) {
      return parts;
    }
    name.remove_prefix(dot + 1);
  }
}

/// "Shop.Cart" has its type information at "_ZTIN4Shop4CartE".
std::string typeInformationSymbol(const std::vector<std::string_view>& parts) {
  std::string symbol = parts.size() > 1 ? "_ZTIN" : "_ZTI";
  for (std::string_view part : parts) {
    symbol += std::to_string(part.size());
    symbol += part;
  }
  return parts.size() > 1 ? symbol + 'E' : symbol;
}

/// Every object by itself: what was loaded locally is not found from elsewhere.
bool isExported(const std::string& symbol) {
  std::vector<std::string> objects;
  // Only names are taken while the loader holds its list.
  dl_iterate_phdr(
      [](dl_phdr_info* object, std::size_t, void* result) {
        static_cast<std::vector<std::string>*>(result)->emplace_back(object->dlpi_name);
        return 0;
      },
      &objects);
  for (const std::string& object : objects) {
    void* const handle = dlopen(object.empty() ? nullptr : object.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr) {
      continue;
    }
    const bool isFound = dlsym(handle, symbol.c_str()) != nullptr;
    dlclose(handle);
    if (isFound) {
      return true;
    }
  }
  return false;
}

bool isMetaType(const std::vector<std::string_view>& parts) {
  QByteArray name;
  for (std::string_view part : parts) {
    name += name.isEmpty() ? "" : "::";
    name.append(part.data(), static_cast<qsizetype>(part.size()));
  }
  return QMetaType::fromName(name).isValid() || QMetaType::fromName(name + '*').isValid();
}

}  // namespace

QtClassRegistry& QtClassRegistry::shared() {
  static QtClassRegistry& instance = *new QtClassRegistry;
  return instance;
}

bool QtClassRegistry::hasClass(std::string_view name) const {
  const std::vector<std::string_view> parts = partsOf(name);
  for (std::string_view part : parts) {
    if (part.empty()) {
      return false;
    }
  }
  return isExported(typeInformationSymbol(parts)) || isMetaType(parts);
}

}  // namespace tarnix::qt6
