#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace tarnix::linux_platform {

/// The calls of a thread, innermost first, as addresses.
struct CallStack {
  /// Of a stack that has overflowed the innermost calls tell what happened.
  static constexpr std::size_t maximumDepth = 128;

  std::array<void*, maximumDepth> addresses{};
  std::size_t count = 0;
  /// Whether the first address is that of an instruction that was about to run. All others are
  /// where a call returns to.
  bool beginsAtInstruction = false;
};

/// To be called once before any crash: the first capture may load a library.
void prepareCallStacks();

/// The calls that led to the caller of this. Allocates nothing and takes no lock.
CallStack captureCallStack();

/// In a signal handler: the calls that led to where the signal arrived, given the handler's
/// context.
CallStack captureInterruptedCallStack(const void* context);

/// One line a call: number, file, address, function, and source file and line where there is debug
/// information. Opens files and allocates.
std::vector<std::string> symbolsOf(const CallStack& stack);

}  // namespace tarnix::linux_platform
