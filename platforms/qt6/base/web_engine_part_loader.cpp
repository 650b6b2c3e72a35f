#include "platforms/qt6/base/web_engine_part_loader.h"

#include <dlfcn.h>
#include <unistd.h>

#include <string>

#include "platforms/qt6/base/module_folder.h"
#include "platforms/qt6/base/qt_web_view_class.h"

namespace tarnix::qt6 {

namespace {

constexpr const char* engineLibrary = "libQt6WebEngineCore.so.6";

std::string partPath() { return moduleFolder() + "libtarnixprobe-qt6-webengine.so"; }

bool isEngineLoaded() {
  void* const handle = dlopen(engineLibrary, RTLD_LAZY | RTLD_NOLOAD);
  if (handle == nullptr) {
    return false;
  }
  dlclose(handle);
  return true;
}

}  // namespace

WebEnginePartLoader& WebEnginePartLoader::shared() {
  static WebEnginePartLoader& instance = *new WebEnginePartLoader;
  return instance;
}

bool WebEnginePartLoader::isPartThere() { return access(partPath().c_str(), R_OK) == 0; }

void WebEnginePartLoader::start(InterposedCalls* calls) {
  context_.initialiser = &QtWebViewClass::shared().initialiser();
  update();
  if (calls != nullptr) {
    calls->webViewsAreComing.store([] { shared().update(); }, std::memory_order_release);
  }
}

void WebEnginePartLoader::update() noexcept {
  try {
    const std::lock_guard guard(lock_);
    if (!hasTried_ && isEngineLoaded()) {
      hasTried_ = true;
      load();
    }
    if (entry_ != nullptr) {
      entry_(&context_);
    }
  } catch (...) {
    // Memory ran out. The host's pages go on unseen.
  }
}

void WebEnginePartLoader::load() {
  void* const part = dlopen(partPath().c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  void* const entry = part == nullptr ? nullptr : dlsym(part, webEnginePartEntryName);
  entry_ = reinterpret_cast<WebEnginePartEntry>(entry);
}

}  // namespace tarnix::qt6
