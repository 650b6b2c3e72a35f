#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "probe/inspect/probe_accessibility_scanner.h"

namespace tarnix::integration {

/// The key window as the scanner reads it, one line an element, in its order: kind, label, then in
/// braces the value, then the marks "field", "selected" and "disabled".
std::vector<std::string> screenLines();

/// Those of them in which this stands.
std::vector<std::string> linesWith(const std::string& part);

/// The elements of that label.
std::vector<ProbeAccessibilityScanner::Element> elementsLabelled(const std::string& label);

/// Loads a QML file of this folder in the process, shows it and lets it go at the end.
class ShownQmlFile {
 public:
  explicit ShownQmlFile(const std::string& file);
  ~ShownQmlFile();

  ShownQmlFile(const ShownQmlFile&) = delete;
  ShownQmlFile& operator=(const ShownQmlFile&) = delete;

  /// Opens the popup, menu or dialog of that object name, and waits until it is open.
  void open(const std::string& popup);

 private:
  struct Engine;
  Engine* const engine_;
};

/// The same for a page of widgets.
class ShownWidgetPage {
 public:
  explicit ShownWidgetPage(const std::string& page);
  ~ShownWidgetPage();

  ShownWidgetPage(const ShownWidgetPage&) = delete;
  ShownWidgetPage& operator=(const ShownWidgetPage&) = delete;
};

}  // namespace tarnix::integration
