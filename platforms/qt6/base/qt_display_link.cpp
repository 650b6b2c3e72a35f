#include "platforms/qt6/base/qt_display_link.h"

#include <set>

namespace tarnix::qt6 {

namespace {

std::set<QtDisplayLink*>& links() {
  static std::set<QtDisplayLink*>& instance = *new std::set<QtDisplayLink*>;
  return instance;
}

}  // namespace

QtDisplayLink::QtDisplayLink() { links().insert(this); }

QtDisplayLink::~QtDisplayLink() { links().erase(this); }

void QtDisplayLink::resumeAll() {
  for (QtDisplayLink* const link : links()) {
    link->resume();
  }
}

void QtDisplayLink::suspendAll() {
  for (QtDisplayLink* const link : links()) {
    link->suspend();
  }
}

}  // namespace tarnix::qt6
