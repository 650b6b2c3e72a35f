#pragma once

#include <string>
#include <vector>

namespace tarnix::companion {

/// What a user typed, without this program's name.
struct CommandLine {
  std::vector<std::string> own;
  /// Of `tarnix run`: the application and its arguments, none of which are ours to understand.
  std::vector<std::string> application;
};

/// `arguments` begin with this program's name. The application's begin behind "--", or with the
/// first word behind "run" that is neither an option nor an option's value.
CommandLine splitCommandLine(const std::vector<std::string>& arguments);

}  // namespace tarnix::companion
