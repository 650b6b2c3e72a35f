#include "bench/accessibility_bus_reader.h"

#include <atspi/atspi.h>
#include <glib.h>

#include <memory>

namespace tarnix::bench {
namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
using Accessible = std::unique_ptr<AtspiAccessible, Unref>;

std::string nameOf(AtspiAccessible* accessible) {
  const std::unique_ptr<char, decltype(&g_free)> name(
      atspi_accessible_get_name(accessible, nullptr), g_free);
  return name ? name.get() : "";
}

Accessible childOf(AtspiAccessible* accessible, int index) {
  return Accessible(atspi_accessible_get_child_at_index(accessible, index, nullptr));
}

std::size_t readTree(AtspiAccessible* accessible) {
  std::size_t named = nameOf(accessible).empty() ? 0 : 1;
  atspi_accessible_get_role(accessible, nullptr);
  const std::unique_ptr<AtspiStateSet, Unref> states(atspi_accessible_get_state_set(accessible));
  if (const std::unique_ptr<AtspiComponent, Unref> component(
          atspi_accessible_get_component_iface(accessible));
      component) {
    g_free(atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_WINDOW, nullptr));
  }
  const int children = atspi_accessible_get_child_count(accessible, nullptr);
  for (int index = 0; index < children; ++index) {
    if (const Accessible child = childOf(accessible, index)) {
      named += readTree(child.get());
    }
  }
  return named;
}

}  // namespace

AccessibilityBusReader::AccessibilityBusReader() { atspi_init(); }

std::optional<int> AccessibilityBusReader::findApplication(const std::string& name) const {
  const Accessible desktop(atspi_get_desktop(0));
  const int count = atspi_accessible_get_child_count(desktop.get(), nullptr);
  for (int index = 0; index < count; ++index) {
    const Accessible application = childOf(desktop.get(), index);
    if (application && nameOf(application.get()) == name &&
        atspi_accessible_get_child_count(application.get(), nullptr) > 0) {
      return index;
    }
  }
  return std::nullopt;
}

bool AccessibilityBusReader::waitForApplication(const std::string& name, int seconds) {
  constexpr int attemptsPerSecond = 10;
  for (int attempt = 0; attempt < seconds * attemptsPerSecond; ++attempt) {
    if (const std::optional<int> index = findApplication(name)) {
      index_ = *index;
      return true;
    }
    g_usleep(G_USEC_PER_SEC / attemptsPerSecond);
  }
  return false;
}

std::size_t AccessibilityBusReader::readNamedNodes() const {
  const Accessible desktop(atspi_get_desktop(0));
  const Accessible application = childOf(desktop.get(), index_);
  return application ? readTree(application.get()) : 0;
}

}  // namespace tarnix::bench
