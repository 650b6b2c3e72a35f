#pragma once

#include <string>
#include <vector>

namespace tarnix::integration {

/// What is probed: programs of the distribution, and files of ours for the QML runtime.
struct Application {
  std::string name;
  std::vector<std::string> commandLine;
};

inline Application pentobi() { return {"pentobi", {"/usr/games/pentobi"}}; }
inline Application focuswriter() { return {"focuswriter", {"/usr/bin/focuswriter"}}; }
inline Application qmlFile(const std::string& file, std::vector<std::string> arguments = {}) {
  Application application{file, {"/usr/lib/qt6/bin/qml", TARNIX_QML_DIRECTORY "/" + file}};
  if (!arguments.empty()) {
    application.commandLine.emplace_back("--");
    application.commandLine.insert(application.commandLine.end(), arguments.begin(),
                                   arguments.end());
  }
  return application;
}

}  // namespace tarnix::integration
