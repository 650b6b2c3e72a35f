#include "platforms/qt6/widgets/own_handlers.h"

#include <dlfcn.h>

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QWidget>
#include <cstddef>
#include <cstring>
#include <optional>
#include <unordered_map>

namespace tarnix::qt6 {

namespace {

constexpr std::size_t entriesBeforeFunctions = 2;
constexpr std::size_t mostFunctions = 128;

/// The place of a function in the table of virtual functions that a class and all that derive from
/// it share. Both are exported symbols; absent when this version of the toolkit has them under
/// other names.
std::optional<std::size_t> slotOf(const char* tableName, const char* functionName) {
  void* const library = dlopen("libQt6Widgets.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) {
    return std::nullopt;
  }
  void* const function = dlsym(library, functionName);
  auto* const table = static_cast<void**>(dlsym(library, tableName));
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

struct Handler {
  bool isToolkits = false;
  /// What the toolkit exports are the handlers of classes that anybody can use, which are known.
  bool isExported = false;
};

/// Where the code stands that `object`, of any class with such a table, has in this place of it.
std::optional<Handler> handlerOf(const void* object, std::optional<std::size_t> slot) {
  if (!slot) {
    return std::nullopt;
  }
  // Looking one up takes longer than all else that is asked of a thing; there are few.
  static auto& known = *new std::unordered_map<const void*, std::optional<Handler>>;
  const void* const function = (*static_cast<const void* const* const*>(object))[*slot];
  const auto [entry, isNew] = known.try_emplace(function);
  Dl_info origin{};
  if (isNew && dladdr(function, &origin) != 0 && origin.dli_fname != nullptr) {
    entry->second =
        Handler{.isToolkits = std::strstr(origin.dli_fname, "libQt6Widgets.so") != nullptr,
                .isExported = origin.dli_saddr == function};
  }
  return entry->second;
}

bool isOwn(const void* object, std::optional<std::size_t> slot) {
  const std::optional<Handler> handler = handlerOf(object, slot);
  return handler && !handler->isToolkits;
}

/// The colours of a colour dialog are of such a class.
bool isOfUnknownClass(const void* object, std::optional<std::size_t> slot) {
  const std::optional<Handler> handler = handlerOf(object, slot);
  return handler && !(handler->isToolkits && handler->isExported);
}

constexpr const char* tableOfWidgets = "_ZTV7QWidget";
constexpr const char* tableOfFigures = "_ZTV13QGraphicsItem";
constexpr const char* tableOfScenes = "_ZTV14QGraphicsScene";

}  // namespace

bool hasOwnPressHandler(const QWidget& widget) {
  static const std::optional<std::size_t> press =
      slotOf(tableOfWidgets, "_ZN7QWidget15mousePressEventEP11QMouseEvent");
  static const std::optional<std::size_t> release =
      slotOf(tableOfWidgets, "_ZN7QWidget17mouseReleaseEventEP11QMouseEvent");
  return isOfUnknownClass(&widget, press) || isOwn(&widget, release);
}

bool hasOwnPressHandler(const QGraphicsItem& figure) {
  static const std::optional<std::size_t> press =
      slotOf(tableOfFigures, "_ZN13QGraphicsItem15mousePressEventEP24QGraphicsSceneMouseEvent");
  static const std::optional<std::size_t> release =
      slotOf(tableOfFigures, "_ZN13QGraphicsItem17mouseReleaseEventEP24QGraphicsSceneMouseEvent");
  static const std::optional<std::size_t> any =
      slotOf(tableOfFigures, "_ZN13QGraphicsItem10sceneEventEP6QEvent");
  return isOwn(&figure, press) || isOwn(&figure, release) || isOwn(&figure, any);
}

bool hasOwnPressHandler(const QGraphicsScene& scene) {
  static const std::optional<std::size_t> press =
      slotOf(tableOfScenes, "_ZN14QGraphicsScene15mousePressEventEP24QGraphicsSceneMouseEvent");
  static const std::optional<std::size_t> release =
      slotOf(tableOfScenes, "_ZN14QGraphicsScene17mouseReleaseEventEP24QGraphicsSceneMouseEvent");
  return isOwn(&scene, press) || isOwn(&scene, release);
}

bool hasOwnMoveHandler(const QWidget& widget) {
  static const std::optional<std::size_t> move =
      slotOf(tableOfWidgets, "_ZN7QWidget14mouseMoveEventEP11QMouseEvent");
  return isOfUnknownClass(&widget, move) || widget.inherits("QMdiSubWindow");
}

bool hasOwnKeyHandler(const QWidget& widget) {
  static const std::optional<std::size_t> press =
      slotOf(tableOfWidgets, "_ZN7QWidget13keyPressEventEP9QKeyEvent");
  return isOwn(&widget, press);
}

bool hasOwnKeyHandler(const QGraphicsItem& figure) {
  static const std::optional<std::size_t> press =
      slotOf(tableOfFigures, "_ZN13QGraphicsItem13keyPressEventEP9QKeyEvent");
  return isOwn(&figure, press);
}

bool hasOwnKeyHandler(const QGraphicsScene& scene) {
  static const std::optional<std::size_t> press =
      slotOf(tableOfScenes, "_ZN14QGraphicsScene13keyPressEventEP9QKeyEvent");
  return isOwn(&scene, press);
}

}  // namespace tarnix::qt6
