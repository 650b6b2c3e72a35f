#pragma once

#include <cstdint>
#include <string>

namespace tarnix::linux_platform {

/// What is known of an address of code; what is not known is empty or 0.
struct CodeLocation {
  /// As a person writes it.
  std::string function;
  std::uintptr_t functionStart = 0;
  std::string sourceFile;
  int sourceLine = 0;
};

/// Reads symbol tables and debug information in this process; starts no other. Any thread.
CodeLocation codeLocationOf(std::uintptr_t address);

/// `name` as a person writes it, if it is the name of C++ code; else as it is.
std::string demangled(const char* name);

}  // namespace tarnix::linux_platform
