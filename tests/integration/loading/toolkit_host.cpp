// A process with Qt 6 in it and nothing more: it runs the shell command that it is given, or says
// with --is-loaded whether the preloaded library is in it, and ends with the exit code that comes
// first. What the preloaded library does to a host's start, children
// and end shows here without a window.
#include <dlfcn.h>

#include <QtCore/QtGlobal>
#include <QtGui/QColor>
#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argumentCount, char** arguments) {
  // Keeps both libraries linked.
  if (qVersion() == nullptr || !QColor(Qt::red).isValid()) {
    return 1;
  }
  if (argumentCount > 2 && std::strcmp(arguments[2], "--is-loaded") == 0) {
    std::puts(dlsym(RTLD_DEFAULT, "tarnixprobe_bootstrap") != nullptr ? "loaded" : "not loaded");
  } else if (argumentCount > 2 && std::system(arguments[2]) != 0) {
    return 2;
  }
  return argumentCount > 1 ? std::atoi(arguments[1]) : 0;
}
