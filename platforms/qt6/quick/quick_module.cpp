#include "platforms/qt6/quick/quick_part.h"

extern "C" [[gnu::visibility("default")]] tarnix::qt6::UserInterfacePart* tarnixprobe_qt6_part(
    tarnix::qt6::ViewSource*) {
  return &tarnix::qt6::QuickPart::shared();
}
