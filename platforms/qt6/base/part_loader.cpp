#include "platforms/qt6/base/part_loader.h"

#include <link.h>

#include "platforms/qt6/base/part_module.h"
#include "platforms/qt6/shared/picture_without_overlay.h"

namespace tarnix::qt6 {

namespace {

/// How often the loader has added an object so far.
unsigned long long librariesAdded() {
  unsigned long long result = 0;
  dl_iterate_phdr(
      [](dl_phdr_info* object, std::size_t, void* count) {
        *static_cast<unsigned long long*>(count) = object->dlpi_adds;
        return 1;
      },
      &result);
  return result;
}

}  // namespace

PartLoader& PartLoader::shared() {
  static PartLoader& instance = *new PartLoader;
  return instance;
}

void PartLoader::add(UserInterfacePart* part) { parts_.push_back(part); }

void PartLoader::update() {
  const unsigned long long added = librariesAdded();
  if (added == librariesSeen_) {
    return;
  }
  for (Candidate* candidate : {&widgets_, &quick_}) {
    if (!candidate->isSettled && isLibraryLoaded(candidate->hostLibrary)) {
      candidate->isSettled = true;
      if (UserInterfacePart* part = load(candidate->fileName)) {
        add(part);
      }
    }
  }
  // Counted before: what a part itself has added to the process calls for one more look, no more.
  librariesSeen_ = added;
}

UserInterfacePart* PartLoader::load(const char* fileName) {
  void* const entry = loadPart(fileName, userInterfacePartEntryName);
  // Without the part its windows are shown without content.
  return entry == nullptr ? nullptr : reinterpret_cast<UserInterfacePartEntry>(entry)(this);
}

std::shared_ptr<platform::View> PartLoader::viewOf(QWindow& window,
                                                   const Surroundings& surroundings) {
  for (UserInterfacePart* part : parts_) {
    if (std::shared_ptr<platform::View> view = part->viewOf(window, surroundings)) {
      return view;
    }
  }
  return nullptr;
}

bool PartLoader::addScreens(QWindow& window, ScreenChain& chain) {
  for (UserInterfacePart* part : parts_) {
    if (part->screens().addScreens(window, chain)) {
      return true;
    }
  }
  return false;
}

QImage PartLoader::lastImage(QWindow& window) {
  const PictureWithoutOverlay withoutOverlay(window);
  for (UserInterfacePart* part : parts_) {
    QImage image = part->lastImage(window);
    if (!image.isNull()) {
      return image;
    }
  }
  return {};
}

std::shared_ptr<platform::View> PartLoader::touchedView(QWindow& window,
                                                        const Surroundings& surroundings,
                                                        QPointF point,
                                                        std::shared_ptr<platform::View> outer) {
  for (UserInterfacePart* part : parts_) {
    if (auto view = part->touchedView(window, surroundings, point, outer)) {
      return view;
    }
  }
  return nullptr;
}

std::unique_ptr<OverlayPane> PartLoader::makeOverlayPane(QWindow& window) {
  update();
  for (UserInterfacePart* part : parts_) {
    if (std::unique_ptr<OverlayPane> pane = part->makeOverlayPane(window)) {
      return pane;
    }
  }
  return nullptr;
}

}  // namespace tarnix::qt6
