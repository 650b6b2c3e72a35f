#include "platforms/qt6/network/request_hook.h"

extern "C" [[gnu::visibility("default")]] bool tarnixprobe_qt6_network(
    const tarnix::qt6::NetworkPartContext* context) {
  return tarnix::qt6::request_hook::install(*context);
}
