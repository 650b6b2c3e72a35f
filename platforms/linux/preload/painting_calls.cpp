#include "platforms/linux/preload/interposed_calls.h"
#include "platforms/linux/preload/real_function.h"

/// What tells when the toolkit changes the picture of a window that it keeps in memory.
namespace tarnix::linux_platform {

namespace {

constexpr LibraryNames libraries = {"libQt6Gui.so.6", "libQt5Gui.so.5"};

using BeginPaint = void(void*, const void*);
using EndPaint = void(void*);
using Scroll = bool(void*, const void*, int, int);
using Resize = void(void*, const void*);

constinit RealFunction realBeginPaint("_ZN13QBackingStore10beginPaintERK7QRegion", libraries);
constinit RealFunction realEndPaint("_ZN13QBackingStore8endPaintEv", libraries);
constinit RealFunction realScroll("_ZN13QBackingStore6scrollERK7QRegionii", libraries);
constinit RealFunction realResize("_ZN13QBackingStore6resizeERK5QSize", libraries);

void tell(const PictureChange& change) {
  if (const auto watch = interposedCalls().pictureChanges.load(std::memory_order_acquire)) {
    watch(change);
  }
}

}  // namespace

}  // namespace tarnix::linux_platform

// Member functions of the toolkit's backing store, by the names that the loader knows them under.
// All arguments travel as plain integers and pointers, so plain functions can stand in.
extern "C" {

[[gnu::visibility("default")]] void tarnixprobe_beginPaint(void* store, const void* region) asm(
    "_ZN13QBackingStore10beginPaintERK7QRegion");
[[gnu::visibility("default")]] void tarnixprobe_endPaint(void* store) asm(
    "_ZN13QBackingStore8endPaintEv");
[[gnu::visibility("default")]] bool tarnixprobe_scroll(
    void* store, const void* region, int x, int y) asm("_ZN13QBackingStore6scrollERK7QRegionii");
[[gnu::visibility("default")]] void tarnixprobe_resize(void* store, const void* size) asm(
    "_ZN13QBackingStore6resizeERK5QSize");

void tarnixprobe_beginPaint(void* store, const void* region) {
  using namespace tarnix;
  using namespace tarnix::linux_platform;
  tell({PictureChange::Kind::willPaint, store, region});
  realBeginPaint.as<BeginPaint>()(store, region);
}

void tarnixprobe_endPaint(void* store) {
  using namespace tarnix;
  using namespace tarnix::linux_platform;
  realEndPaint.as<EndPaint>()(store);
  tell({PictureChange::Kind::didPaint, store});
}

bool tarnixprobe_scroll(void* store, const void* region, int x, int y) {
  using namespace tarnix;
  using namespace tarnix::linux_platform;
  tell({PictureChange::Kind::willScroll, store, region});
  const bool hasScrolled = realScroll.as<Scroll>()(store, region, x, y);
  tell({PictureChange::Kind::didScroll, store, region, hasScrolled ? x : 0, hasScrolled ? y : 0});
  return hasScrolled;
}

void tarnixprobe_resize(void* store, const void* size) {
  using namespace tarnix;
  using namespace tarnix::linux_platform;
  tell({PictureChange::Kind::willBeReplaced, store});
  realResize.as<Resize>()(store, size);
}
}
