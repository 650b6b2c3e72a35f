#include "platforms/linux/crash/code_location.h"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>

#ifdef TARNIX_HAS_BACKTRACE_LIBRARY
#include <backtrace.h>
#else
#include <dlfcn.h>
#endif

namespace tarnix::linux_platform {

#ifdef TARNIX_HAS_BACKTRACE_LIBRARY

namespace {

void ignoreError(void*, const char*, int) {}

/// Kept for the life of the process: it holds what has been read of the debug information.
backtrace_state* state() {
  constexpr int isThreaded = 1;
  static backtrace_state* const shared =
      backtrace_create_state(nullptr, isThreaded, ignoreError, nullptr);
  return shared;
}

/// Called for each function that was merged into its caller at this place, innermost first, and at
/// last for the caller itself.
int noteSource(void* argument, std::uintptr_t, const char* file, int line, const char* function) {
  CodeLocation& location = *static_cast<CodeLocation*>(argument);
  if (location.sourceFile.empty() && file != nullptr) {
    location.sourceFile = file;
    location.sourceLine = line;
  }
  if (function != nullptr) {
    location.function = demangled(function);
  }
  return 0;
}

void noteSymbol(void* argument, std::uintptr_t, const char* name, std::uintptr_t start,
                std::uintptr_t) {
  CodeLocation& location = *static_cast<CodeLocation*>(argument);
  if (name != nullptr) {
    location.function = demangled(name);
    location.functionStart = start;
  }
}

}  // namespace

CodeLocation codeLocationOf(std::uintptr_t address) {
  CodeLocation location;
  if (state() != nullptr) {
    backtrace_pcinfo(state(), address, noteSource, ignoreError, &location);
    // The symbol's name has the arguments, which the debug information's leaves out.
    backtrace_syminfo(state(), address, noteSymbol, ignoreError, &location);
  }
  return location;
}

#else

CodeLocation codeLocationOf(std::uintptr_t address) {
  CodeLocation location;
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(address), &info) != 0 && info.dli_sname != nullptr) {
    location.function = demangled(info.dli_sname);
    location.functionStart = reinterpret_cast<std::uintptr_t>(info.dli_saddr);
  }
  return location;
}

#endif

std::string demangled(const char* name) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> text(
      abi::__cxa_demangle(name, nullptr, nullptr, &status), &std::free);
  return status == 0 && text != nullptr ? text.get() : name;
}

}  // namespace tarnix::linux_platform
