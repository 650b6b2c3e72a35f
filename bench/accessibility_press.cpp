// Presses an element of a running application as assistive technology does: by the element's first
// action, over the desktop's accessibility bus.
//
//     bench_accessibility_press APPLICATION LABEL
//
// Says "ready" once the element is found. Then does the action once for each line of its input.

#include <atspi/atspi.h>
#include <glib.h>

#include <cstdio>
#include <memory>
#include <string>

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
using Accessible = std::unique_ptr<AtspiAccessible, Unref>;
using Action = std::unique_ptr<AtspiAction, Unref>;

bool isNamed(AtspiAccessible* accessible, const std::string& name) {
  const std::unique_ptr<char, decltype(&g_free)> found(
      atspi_accessible_get_name(accessible, nullptr), g_free);
  return found && name == found.get();
}

/// The first of that name below `parent` that can be acted on, looking `depth` levels down.
Accessible findBelow(AtspiAccessible* parent, const std::string& name, int depth) {
  const int children = atspi_accessible_get_child_count(parent, nullptr);
  for (int index = 0; index < children; ++index) {
    Accessible child(atspi_accessible_get_child_at_index(parent, index, nullptr));
    if (!child) {
      continue;
    }
    if (isNamed(child.get(), name) && Action(atspi_accessible_get_action_iface(child.get()))) {
      return child;
    }
    if (depth > 0) {
      if (Accessible found = findBelow(child.get(), name, depth - 1)) {
        return found;
      }
    }
  }
  return nullptr;
}

Accessible findElement(const std::string& application, const std::string& label) {
  constexpr int deepest = 20;
  const Accessible desktop(atspi_get_desktop(0));
  const int count = atspi_accessible_get_child_count(desktop.get(), nullptr);
  for (int index = 0; index < count; ++index) {
    const Accessible candidate(atspi_accessible_get_child_at_index(desktop.get(), index, nullptr));
    if (candidate && isNamed(candidate.get(), application)) {
      if (Accessible found = findBelow(candidate.get(), label, deepest)) {
        return found;
      }
    }
  }
  return nullptr;
}

Accessible waitForElement(const std::string& application, const std::string& label) {
  constexpr int attempts = 300;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (Accessible found = findElement(application, label)) {
      return found;
    }
    g_usleep(G_USEC_PER_SEC / 10);
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: bench_accessibility_press APPLICATION LABEL\n");
    return 2;
  }
  atspi_init();
  const Accessible element = waitForElement(argv[1], argv[2]);
  if (!element) {
    std::fprintf(stderr, "%s has no %s that can be acted on\n", argv[1], argv[2]);
    return 1;
  }
  const Action action(atspi_accessible_get_action_iface(element.get()));
  std::puts("ready");
  std::fflush(stdout);
  while (std::getchar() == '\n') {
    if (!atspi_action_do_action(action.get(), 0, nullptr)) {
      return 1;
    }
  }
  return 0;
}
