#include "probe/platform/demangle.h"

#include <dlfcn.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace tarnix::platform {

std::optional<std::string> demangled(const std::string& mangledName) {
  using Demangler = char* (*)(const char* name, std::size_t length, char* buffer,
                              std::size_t* bufferSize, std::uint32_t flags);
  // The names that C++ classes are known by are readable already. Those of a language whose runtime
  // keeps mangled ones are not, and only that runtime, where the host has it, can read them.
  void* const process = ::dlopen(nullptr, RTLD_NOW);
  const auto demangle = process == nullptr
                            ? nullptr
                            : reinterpret_cast<Demangler>(::dlsym(process, "swift_demangle"));
  if (demangle == nullptr) {
    return std::nullopt;
  }
  const std::unique_ptr<char, decltype(&std::free)> text(
      demangle(mangledName.c_str(), mangledName.size(), nullptr, nullptr, 0), &std::free);
  return text == nullptr ? std::nullopt : std::optional<std::string>(text.get());
}

}  // namespace tarnix::platform
