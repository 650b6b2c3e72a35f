#pragma once

#include "probe/platform/web_view.h"

namespace tarnix::qt6 {

/// A page of the toolkit's web engine at the moment at which it is about to load for the first
/// time.
class EnginePage : public platform::WebView {
 public:
  /// What the toolkit itself does at that moment.
  virtual void initialise() = 0;
};

/// What the web engine part is given. Everything lives as long as the process.
struct WebEnginePartContext {
  /// Called for each page in the place of its own initialisation.
  platform::WebViewInitialiser* initialiser = nullptr;
};

/// The one symbol that the web engine part exports. May be called again: the engine's library for
/// Qt Quick may come in after the others. From the first call on every page of the host comes past
/// the initialiser, as far as the part finds what it needs of the toolkit.
using WebEnginePartEntry = void (*)(const WebEnginePartContext* context);
inline constexpr const char* webEnginePartEntryName = "tarnixprobe_qt6_webengine";

}  // namespace tarnix::qt6
