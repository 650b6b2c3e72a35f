#include "platforms/qt6/shared/class_origin.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <limits.h>
#include <link.h>
#include <unistd.h>

#include <QLibraryInfo>
#include <QMetaObject>
#include <QObject>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <typeinfo>

namespace tarnix::qt6 {

namespace {

// The application by a name that says nothing of where it is installed.
constexpr const char* thisProgram = "/proc/self/exe";

/// The first word of an object of a class with virtual functions.
const void* const* virtualTable(const QObject& object) {
  return *reinterpret_cast<const void* const* const*>(&object);
}

/// Null where the class was built without type information.
const std::type_info* typeInformation(const QObject& object) {
  return static_cast<const std::type_info*>(virtualTable(object)[-1]);
}

std::string demangled(const char* name) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> text(
      abi::__cxa_demangle(name, nullptr, nullptr, &status), &std::free);
  return text == nullptr ? std::string() : std::string(text.get());
}

/// What follows the last "::" that stands in no brackets.
std::string unqualified(std::string_view name) {
  std::size_t begin = 0;
  int depth = 0;
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (name[at] == '<' || name[at] == '(' || name[at] == '{') {
      ++depth;
    } else if (name[at] == '>' || name[at] == ')' || name[at] == '}') {
      --depth;
    } else if (depth == 0 && name.compare(at, 2, "::") == 0) {
      begin = at + 2;
      ++at;
    }
  }
  return std::string(name.substr(begin));
}

/// The file that holds what `address` points to; empty for what was made while running. Asked of
/// many objects in a row: `dladdr` goes through all symbols of the file.
std::string_view fileOf(const void* address) {
  dl_find_object object{};
  if (_dl_find_object(const_cast<void*>(address), &object) != 0) {
    return {};
  }
  // The program itself has no name there.
  const char* const name = object.dlfo_link_map->l_name;
  return *name == '\0' ? thisProgram : name;
}

std::string_view folderOf(std::string_view path) {
  return path.substr(0, path.rfind('/') == std::string_view::npos ? 0 : path.rfind('/'));
}

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

/// The two marks by which the name of the screen tells a framework's own classes: "/System/" is no
/// folder of this system, but a toolkit that is installed elsewhere is given it as its root.
bool looksLikeToolkits(std::string_view path) {
  return contains(path, "/usr/lib/") || contains(path, "/System/");
}

/// Bindings derive a class of their own from each of the toolkit's. What a program in their
/// language derives from those is described while it runs.
bool isOfBindings(std::string_view file) {
  return contains(file, "/PyQt6/") || contains(file, "/PySide6/");
}

bool isToolkitFile(std::string_view file) {
  const std::string_view name = file.substr(file.rfind('/') + 1);
  if (name.starts_with("libQt6") || isOfBindings(file)) {
    return true;
  }
  static const std::string& plugins =
      *new std::string(QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString());
  return !plugins.empty() && file.starts_with(plugins);
}

std::string applicationFolder() {
  char path[PATH_MAX];
  const ssize_t length = readlink(thisProgram, path, sizeof(path));
  const std::string_view file(path, length > 0 ? static_cast<std::size_t>(length) : 0);
  const std::string folder(folderOf(file));
  return folder.empty() || looksLikeToolkits(folder + '/') ? thisProgram : folder;
}

}  // namespace

bool isMadeWhileRunning(const QMetaObject& metaObject) { return fileOf(&metaObject).empty(); }

std::string dynamicClassName(const QObject& object) {
  const QMetaObject* const metaObject = object.metaObject();
  // A description that was made while running is of a class that the compiler does not know.
  if (!isMadeWhileRunning(*metaObject)) {
    if (const std::type_info* const type = typeInformation(object)) {
      if (std::string name = unqualified(demangled(type->name())); !name.empty()) {
        return name;
      }
    }
  }
  return unqualified(metaObject->className());
}

bool isToolkitClass(const QObject& object) {
  return isToolkitFile(fileOf(virtualTable(object))) && !isMadeWhileRunning(*object.metaObject());
}

std::string bundlePathOf(const QObject& object) {
  const std::string_view file = fileOf(virtualTable(object));
  const std::string folder(folderOf(file));
  if (isToolkitClass(object)) {
    return looksLikeToolkits(folder) ? folder : "/System" + folder;
  }
  return file.empty() || file == thisProgram || looksLikeToolkits(folder + '/')
             ? applicationFolder()
             : folder;
}

}  // namespace tarnix::qt6
