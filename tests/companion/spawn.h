#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

namespace tarnix::companion {

/// Names with their values.
using Variables = std::vector<std::pair<std::string, std::string>>;

/// Descriptors for the three standard streams of a program.
struct StandardStreams {
  int input = -1;
  int output = -1;
  int errors = -1;
};

/// Starts a program, by path or along PATH, with the environment of this process and `variables` on
/// top of it, in a process group of its own. A negative stream is the null device. Returns its
/// process id, or -1.
pid_t spawn(const std::vector<std::string>& commandLine, const Variables& variables,
            const StandardStreams& streams);

}  // namespace tarnix::companion
