#pragma once

#include <dlfcn.h>

#include <atomic>

namespace tarnix::linux_platform {

/// Where to look for a function: the library of each version of the toolkit.
struct LibraryNames {
  const char* newer;
  const char* older;
};

/// The toolkit's own function behind one that the preloaded library stands in front of: found once
/// and remembered. Any thread.
class RealFunction {
 public:
  constexpr RealFunction(const char* name, const LibraryNames& libraries)
      : name_(name), libraries_(libraries) {}

  template <class Function>
  Function* as() {
    void* function = found_.load(std::memory_order_acquire);
    if (function == nullptr) {
      function = find();
      found_.store(function, std::memory_order_release);
    }
    return reinterpret_cast<Function*>(function);
  }

 private:
  /// It cannot be had by the default search, which finds ours; and the library may have been loaded
  /// by a plugin for itself, where a search behind ours does not see it.
  void* find() const {
    for (const char* library : {libraries_.newer, libraries_.older}) {
      // Never closed: the function stays in use.
      if (void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD)) {
        if (void* const function = dlsym(handle, name_)) {
          return function;
        }
      }
    }
    return dlsym(RTLD_NEXT, name_);
  }

  const char* name_;
  LibraryNames libraries_;
  std::atomic<void*> found_ = nullptr;
};

}  // namespace tarnix::linux_platform
