#include <string.h>

#include "platforms/linux/preload/interposed_calls.h"
#include "platforms/linux/preload/real_function.h"

/// What tells that the host is about to make web views, also when it loads the library for them
/// long after its start.
namespace tarnix::linux_platform {

namespace {

constexpr char qmlModule[] = "QtWebEngine";

constexpr LibraryNames qmlLibraries = {"libQt6Qml.so.6", "libQt5Qml.so.5"};
constexpr LibraryNames pageLibraries = {"libQt6WebEngineCore.so.6", "libQt5WebEngineWidgets.so.5"};

using RegisterModule = void(const char*, int, int);
using MakePage = void(void*, void*);
using MakePageOfProfile = void(void*, void*, void*);

constinit RealFunction realRegisterModule("_Z17qmlRegisterModulePKcii", qmlLibraries);
constinit RealFunction realCompletePage("_ZN14QWebEnginePageC1EP7QObject", pageLibraries);
constinit RealFunction realBasePage("_ZN14QWebEnginePageC2EP7QObject", pageLibraries);
constinit RealFunction realCompletePageOfProfile(
    "_ZN14QWebEnginePageC1EP17QWebEngineProfileP7QObject", pageLibraries);
constinit RealFunction realBasePageOfProfile("_ZN14QWebEnginePageC2EP17QWebEngineProfileP7QObject",
                                             pageLibraries);

void webViewsAreComing() {
  if (void (*const tell)() = interposedCalls().webViewsAreComing.load(std::memory_order_acquire)) {
    tell();
  }
}

}  // namespace

}  // namespace tarnix::linux_platform

// Functions of the toolkit, by the names that the loader knows them under. All arguments travel as
// plain integers and pointers, so plain functions can stand in.
extern "C" {

[[gnu::visibility("default")]] void tarnixprobe_registerModule(
    const char* uri, int major, int minor) asm("_Z17qmlRegisterModulePKcii");
[[gnu::visibility("default")]] void tarnixprobe_completePage(void* page, void* parent) asm(
    "_ZN14QWebEnginePageC1EP7QObject");
[[gnu::visibility("default")]] void tarnixprobe_basePage(void* page, void* parent) asm(
    "_ZN14QWebEnginePageC2EP7QObject");
[[gnu::visibility("default")]] void tarnixprobe_completePageOfProfile(
    void* page, void* profile,
    void* parent) asm("_ZN14QWebEnginePageC1EP17QWebEngineProfileP7QObject");
[[gnu::visibility("default")]] void tarnixprobe_basePageOfProfile(
    void* page, void* profile,
    void* parent) asm("_ZN14QWebEnginePageC2EP17QWebEngineProfileP7QObject");

void tarnixprobe_registerModule(const char* uri, int major, int minor) {
  using namespace tarnix::linux_platform;
  realRegisterModule.as<RegisterModule>()(uri, major, minor);
  if (uri != nullptr && strcmp(uri, qmlModule) == 0) {
    webViewsAreComing();
  }
}

void tarnixprobe_completePage(void* page, void* parent) {
  using namespace tarnix::linux_platform;
  webViewsAreComing();
  realCompletePage.as<MakePage>()(page, parent);
}

void tarnixprobe_basePage(void* page, void* parent) {
  using namespace tarnix::linux_platform;
  webViewsAreComing();
  realBasePage.as<MakePage>()(page, parent);
}

void tarnixprobe_completePageOfProfile(void* page, void* profile, void* parent) {
  using namespace tarnix::linux_platform;
  webViewsAreComing();
  realCompletePageOfProfile.as<MakePageOfProfile>()(page, profile, parent);
}

void tarnixprobe_basePageOfProfile(void* page, void* profile, void* parent) {
  using namespace tarnix::linux_platform;
  webViewsAreComing();
  realBasePageOfProfile.as<MakePageOfProfile>()(page, profile, parent);
}
}
