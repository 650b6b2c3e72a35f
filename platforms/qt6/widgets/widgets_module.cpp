#include "platforms/qt6/widgets/widgets_part.h"

extern "C" [[gnu::visibility("default")]] tarnix::qt6::UserInterfacePart* tarnixprobe_qt6_part(
    tarnix::qt6::ViewSource* source) {
  static tarnix::qt6::WidgetsPart& part = *new tarnix::qt6::WidgetsPart(*source);
  return &part;
}
