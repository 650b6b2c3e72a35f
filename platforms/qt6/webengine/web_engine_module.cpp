#include "platforms/qt6/webengine/engine_hook.h"

extern "C" [[gnu::visibility("default")]] void tarnixprobe_qt6_webengine(
    const tarnix::qt6::WebEnginePartContext* context) {
  tarnix::qt6::engine_hook::install(*context);
}
