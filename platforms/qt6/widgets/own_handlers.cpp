#include "platforms/qt6/widgets/own_handlers.h"

#include <dlfcn.h>
#include <link.h>

#include <QWidget>
#include <cstddef>
#include <cstring>
#include <optional>

namespace tarnix::qt6 {

namespace {

constexpr std::size_t entriesBeforeFunctions = 2;
constexpr std::size_t mostFunctions = 128;

/// The place of a function in the table of virtual functions that all widgets share. Both are
/// exported symbols; absent when this version of the toolkit has them under other names.
std::optional<std::size_t> slotOf(const char* functionName) {
  void* const library = dlopen("libQt6Widgets.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) {
    return std::nullopt;
  }
  void* const function = dlsym(library, functionName);
  auto* const table = static_cast<void**>(dlsym(library, "_ZTV7QWidget"));
  dlclose(library);
  if (function == nullptr || table == nullptr) {
    return std::nullopt;
  }
  for (std::size_t slot = 0; slot < mostFunctions; ++slot) {
    if (table[entriesBeforeFunctions + slot] == function) {
      return slot;
    }
  }
  return std::nullopt;
}

bool isOwn(const QWidget& widget, std::optional<std::size_t> slot) {
  if (!slot) {
    return false;
  }
  void* const* const functions = *reinterpret_cast<void* const* const*>(&widget);
  // Asked of every widget of a screen: `dladdr` goes through all symbols of the file.
  dl_find_object file{};
  return _dl_find_object(functions[*slot], &file) == 0 &&
         std::strstr(file.dlfo_link_map->l_name, "libQt6Widgets.so") == nullptr;
}

}  // namespace

bool hasOwnPressHandler(const QWidget& widget) {
  static const std::optional<std::size_t> press =
      slotOf("_ZN7QWidget15mousePressEventEP11QMouseEvent");
  static const std::optional<std::size_t> release =
      slotOf("_ZN7QWidget17mouseReleaseEventEP11QMouseEvent");
  return isOwn(widget, press) || isOwn(widget, release);
}

bool hasOwnKeyHandler(const QWidget& widget) {
  static const std::optional<std::size_t> press = slotOf("_ZN7QWidget13keyPressEventEP9QKeyEvent");
  return isOwn(widget, press);
}

}  // namespace tarnix::qt6
