#include "platforms/qt6/base/main_loop_watch.h"

#include <dlfcn.h>
#include <glib.h>

#include <thread>

namespace tarnix::qt6 {

namespace {

/// What is used of the library. It is only looked for: a host without it has another loop.
struct GLib {
  decltype(&::g_source_new) sourceNew = nullptr;
  decltype(&::g_source_set_priority) setPriority = nullptr;
  decltype(&::g_source_attach) attach = nullptr;
  decltype(&::g_source_destroy) destroy = nullptr;
  decltype(&::g_source_unref) unref = nullptr;

  bool isComplete() const {
    return sourceNew != nullptr && setPriority != nullptr && attach != nullptr &&
           destroy != nullptr && unref != nullptr;
  }
};

template <class Function>
void find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
}

const GLib& glib() {
  static const GLib functions = [] {
    GLib found;
    // Never closed: the functions stay in use.
    if (void* const library = dlopen("libglib-2.0.so.0", RTLD_LAZY | RTLD_NOLOAD)) {
      find(library, "g_source_new", found.sourceNew);
      find(library, "g_source_set_priority", found.setPriority);
      find(library, "g_source_attach", found.attach);
      find(library, "g_source_destroy", found.destroy);
      find(library, "g_source_unref", found.unref);
    }
    return found;
  }();
  return functions;
}

// Before all others, so that it is asked each time: the loop asks no more once one is ready.
constexpr int firstOfAll = -1'000'000;

}  // namespace

/// Never ready for anything. It is there to be asked whether it is.
struct MainLoopWatch::Source {
  struct Watching {
    GSource base;
    Source* owner;
    std::thread::id thread;
  };

  explicit Source(Observer& observer) : observer_(observer) {
    if (!glib().isComplete()) {
      return;
    }
    static GSourceFuncs functions = {prepare, check, nullptr, nullptr, nullptr, nullptr};
    source_ = reinterpret_cast<Watching*>(glib().sourceNew(&functions, sizeof(Watching)));
    source_->owner = this;
    source_->thread = std::this_thread::get_id();
    glib().setPriority(&source_->base, firstOfAll);
    glib().attach(&source_->base, nullptr);
  }
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  ~Source() {
    if (source_ != nullptr) {
      // The loop may be asking it right now, and holds it as long.
      source_->owner = nullptr;
      // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): complete, or there is no source.
      glib().destroy(&source_->base);
      glib().unref(&source_->base);
    }
  }

  bool hasRested() const { return hasRested_; }

 private:
  // Another thread may run the loop while the main thread does not.
  static Source* ownerOf(GSource* source) {
    const Watching* const watching = reinterpret_cast<Watching*>(source);
    return watching->thread == std::this_thread::get_id() ? watching->owner : nullptr;
  }

  static gboolean prepare(GSource* source, gint* timeout) {
    *timeout = -1;
    if (Source* const owner = ownerOf(source)) {
      owner->observer_.loopWillRest();
    }
    return FALSE;
  }

  static gboolean check(GSource* source) {
    if (Source* const owner = ownerOf(source)) {
      owner->hasRested_ = true;
      owner->observer_.loopHasRested();
    }
    return FALSE;
  }

  Observer& observer_;
  Watching* source_ = nullptr;
  bool hasRested_ = false;
};

MainLoopWatch::MainLoopWatch(Observer& observer) : source_(std::make_unique<Source>(observer)) {}

MainLoopWatch::~MainLoopWatch() = default;

bool MainLoopWatch::isWatching() const { return source_->hasRested(); }

}  // namespace tarnix::qt6
