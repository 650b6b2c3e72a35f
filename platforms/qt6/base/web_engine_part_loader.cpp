#include "platforms/qt6/base/web_engine_part_loader.h"

#include <unistd.h>

#include "platforms/qt6/base/part_module.h"
#include "platforms/qt6/base/qt_web_view_class.h"

namespace tarnix::qt6 {

namespace {

constexpr const char* engineLibrary = "libQt6WebEngineCore.so.6";
constexpr const char* fileName = "libtarnixprobe-qt6-webengine.so";

}  // namespace

WebEnginePartLoader& WebEnginePartLoader::shared() {
  static WebEnginePartLoader& instance = *new WebEnginePartLoader;
  return instance;
}

bool WebEnginePartLoader::isPartThere() { return access(partPath(fileName).c_str(), R_OK) == 0; }

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
    if (!hasTried_ && isLibraryLoaded(engineLibrary)) {
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
  entry_ = reinterpret_cast<WebEnginePartEntry>(loadPart(fileName, webEnginePartEntryName));
}

}  // namespace tarnix::qt6
