#include "platforms/qt6/webengine/profile_scripts.h"

#include <dlfcn.h>

#include <QWebEngineScript>
#include <string>
#include <vector>

#include "platforms/qt6/webengine/script_wrapping.h"

namespace tarnix::qt6::profile_scripts {

namespace {

using ControllerOf = void*(void* profile);
/// Without contents of one page the script is for all pages of the profile.
using AddScript = void(void* controller, const void* script, void* contents);

struct EngineFunctions {
  ControllerOf* controllerOf = nullptr;
  AddScript* addScript = nullptr;
};

const EngineFunctions& engine() {
  static const EngineFunctions functions = [] {
    EngineFunctions found;
    if (void* const library = dlopen("libQt6WebEngineCore.so.6", RTLD_LAZY | RTLD_NOLOAD)) {
      found.controllerOf = reinterpret_cast<ControllerOf*>(
          dlsym(library, "_ZN15QtWebEngineCore14ProfileAdapter22userResourceControllerEv"));
      found.addScript = reinterpret_cast<AddScript*>(
          dlsym(library,
                "_ZN15QtWebEngineCore26UserResourceControllerHost13addUserScriptE"
                "RKNS_10UserScriptEPNS_18WebContentsAdapterE"));
    }
    return found;
  }();
  return functions;
}

struct KnownScript {
  platform::UserScript script;
  /// The engine tells scripts apart by this one, so the same must be used each time.
  QWebEngineScript engineScript;
};

std::vector<KnownScript>& knownScripts() {
  static std::vector<KnownScript>& scripts = *new std::vector<KnownScript>;
  return scripts;
}

QWebEngineScript makeEngineScript(const platform::UserScript& script) {
  QWebEngineScript made;
  made.setName(QLatin1String(ownScriptName));
  made.setSourceCode(wrap(script.source));
  made.setInjectionPoint(script.injectionTime == platform::UserScriptInjectionTime::AtDocumentStart
                             ? QWebEngineScript::DocumentCreation
                             : QWebEngineScript::DocumentReady);
  made.setWorldId(QWebEngineScript::MainWorld);
  made.setRunsOnSubFrames(!script.forMainFrameOnly);
  return made;
}

const QWebEngineScript& engineScriptFor(const platform::UserScript& script) {
  for (const KnownScript& known : knownScripts()) {
    if (known.script.source == script.source &&
        known.script.injectionTime == script.injectionTime &&
        known.script.forMainFrameOnly == script.forMainFrameOnly) {
      return known.engineScript;
    }
  }
  return knownScripts().emplace_back(KnownScript{script, makeEngineScript(script)}).engineScript;
}

void add(void* profile, const QWebEngineScript& script) {
  // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): complete where it is used.
  void* const controller = profile == nullptr ? nullptr : engine().controllerOf(profile);
  // The public class is one pointer to what the engine keeps.
  static_assert(sizeof(QWebEngineScript) == sizeof(void*));
  const void* const engineScript =
      *static_cast<const void* const*>(static_cast<const void*>(&script));
  if (controller != nullptr && engineScript != nullptr) {
    engine().addScript(controller, engineScript, nullptr);
  }
}

}  // namespace

bool isPossible() { return engine().controllerOf != nullptr && engine().addScript != nullptr; }

void add(void* profile, const platform::UserScript& script) {
  add(profile, engineScriptFor(script));
}

void addAgain(void* profile) noexcept {
  for (const KnownScript& known : knownScripts()) {
    add(profile, known.engineScript);
  }
}

}  // namespace tarnix::qt6::profile_scripts
