#include "platforms/qt6/webengine/engine_hook.h"

#include <dlfcn.h>

#include <QString>
#include <utility>

#include "platforms/qt6/shared/virtual_slot.h"
#include "platforms/qt6/webengine/message_handlers.h"
#include "platforms/qt6/webengine/moved_calls.h"
#include "platforms/qt6/webengine/page_content_controller.h"
#include "platforms/qt6/webengine/posted_message.h"
#include "platforms/qt6/webengine/profile_scripts.h"

class QUrl;

namespace tarnix::qt6::engine_hook {

namespace {

// Functions of the user interface's object, which is what `client` is. References and enumerations
// travel as what stands here.
using InitialisationFinished = void(void* client);
using NavigationRequested = void(void* client, int type, const QUrl* url, bool* accepted,
                                 bool isMainFrame);
using ConsoleMessage = void(void* client, int level, const QString* message, int line,
                            const QString* source);
using ProfileOf = void*(void* client);

constinit platform::WebViewInitialiser* initialiser = nullptr;

/// One of the two libraries' classes, by the names that the loader knows.
struct EngineClass {
  const char* library;
  const char* table;
  const char* initialisationFinished;
  const char* navigationRequested;
  const char* consoleMessage;
  const char* profileOf;
};

struct Widgets {
  static constexpr EngineClass names = {
      "libQt6WebEngineCore.so.6",
      "_ZTV21QWebEnginePagePrivate",
      "_ZN21QWebEnginePagePrivate22initializationFinishedEv",
      "_ZN21QWebEnginePagePrivate19navigationRequestedEiRK4QUrlRbb",
      "_ZN21QWebEnginePagePrivate24javaScriptConsoleMessageEN15QtWebEngineCore"
      "24WebContentsAdapterClient29JavaScriptConsoleMessageLevelERK7QStringiS5_",
      "_ZN21QWebEnginePagePrivate14profileAdapterEv"};
};

struct Quick {
  static constexpr EngineClass names = {
      "libQt6WebEngineQuick.so.6",
      "_ZTV26QQuickWebEngineViewPrivate",
      "_ZN26QQuickWebEngineViewPrivate22initializationFinishedEv",
      "_ZN26QQuickWebEngineViewPrivate19navigationRequestedEiRK4QUrlRbb",
      "_ZN26QQuickWebEngineViewPrivate24javaScriptConsoleMessageEN15QtWebEngineCore"
      "24WebContentsAdapterClient29JavaScriptConsoleMessageLevelERK7QStringiS5_",
      "_ZN26QQuickWebEngineViewPrivate14profileAdapterEv"};
};

class Configuration : public platform::WebViewConfiguration {
 public:
  explicit Configuration(void* profile) : controller_(profile) {}
  platform::UserContentController& userContentController() override { return controller_; }

 private:
  PageContentController controller_;
};

/// The functions that stand in the place of one class's own.
template <class Library>
class Hook {
 public:
  static void install() {
    if (std::exchange(isInstalled_, isThere())) {
      return;
    }
    if (isInstalled_) {
      take();
    }
  }

 private:
  class Page : public EnginePage {
   public:
    explicit Page(void* client) : client_(client) {}
    void initialise() override {
      isInitialised_ = true;
      initialisationFinished_(client_);
    }
    bool isInitialised() const { return isInitialised_; }

   private:
    void* client_;
    bool isInitialised_ = false;
  };

  static bool isThere() {
    if (handle_ == nullptr) {
      // Never closed: its functions stay in use.
      handle_ = dlopen(Library::names.library, RTLD_LAZY | RTLD_NOLOAD);
    }
    return handle_ != nullptr;
  }

  static void* find(const char* name) { return dlsym(handle_, name); }

  template <class Function>
  static void replace(const char* name, Function*& original, Function* replacement) {
    if (void* const function = find(name)) {
      original = reinterpret_cast<Function*>(function);
      replaceVirtualSlot(handle_, Library::names.table, function, function,
                         reinterpret_cast<void*>(replacement));
    }
  }

  static void take() {
    constexpr const EngineClass& names = Library::names;
    profileOf_ = reinterpret_cast<ProfileOf*>(find(names.profileOf));
    if (profileOf_ == nullptr || !profile_scripts::isPossible() ||
        find(names.initialisationFinished) == nullptr) {
      return;
    }
    // The way back comes first. Without it no page is given a script.
    replace(names.consoleMessage, consoleMessage_, consoleMessage);
    if (consoleMessage_ == nullptr) {
      return;
    }
    replace(names.navigationRequested, navigationRequested_, navigationRequested);
    replace(names.initialisationFinished, initialisationFinished_, initialisationFinished);
  }

  static void initialisationFinished(void* client) {
    moved_calls::forget(client);
    Page page(client);
    try {
      Configuration configuration(profileOf_(client));
      (*initialiser)(page, {}, configuration);
    } catch (...) {
      // Memory ran out.
    }
    if (!page.isInitialised()) {
      initialisationFinished_(client);
    }
  }

  static void navigationRequested(void* client, int type, const QUrl* url, bool* accepted,
                                  bool isMainFrame) {
    profile_scripts::addAgain(profileOf_(client));
    navigationRequested_(client, type, url, accepted, isMainFrame);
  }

  static void consoleMessage(void* client, int level, const QString* message, int line,
                             const QString* source) {
    CallSite site{line, *source};
    try {
      if (PostedMessage::isOne(*message)) {
        receive(client, *message);
        return;
      }
      site = moved_calls::original(client, *message, site);
    } catch (...) {
      // Memory ran out.
    }
    consoleMessage_(client, level, message, site.line, &site.source);
  }

  static void receive(void* client, const QString& text) {
    if (std::optional<PostedMessage> message = PostedMessage::parse(text)) {
      moved_calls::expect(client, *message);
      PageContentController controller(profileOf_(client));
      message_handlers::deliver(controller, message->handlerName, {std::move(message->body)});
    }
  }

  static inline constinit bool isInstalled_ = false;
  static inline constinit void* handle_ = nullptr;
  static inline constinit ProfileOf* profileOf_ = nullptr;
  static inline constinit InitialisationFinished* initialisationFinished_ = nullptr;
  static inline constinit NavigationRequested* navigationRequested_ = nullptr;
  static inline constinit ConsoleMessage* consoleMessage_ = nullptr;
};

}  // namespace

void install(const WebEnginePartContext& context) {
  initialiser = context.initialiser;
  Hook<Widgets>::install();
  Hook<Quick>::install();
}

}  // namespace tarnix::qt6::engine_hook
