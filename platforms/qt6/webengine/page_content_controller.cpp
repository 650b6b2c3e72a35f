#include "platforms/qt6/webengine/page_content_controller.h"

#include "platforms/qt6/webengine/message_handlers.h"
#include "platforms/qt6/webengine/profile_scripts.h"

namespace tarnix::qt6 {

void PageContentController::addUserScript(const platform::UserScript& script) {
  profile_scripts::add(profile_, script);
}

void PageContentController::add(platform::ScriptMessageHandler& handler, std::string_view name) {
  message_handlers::set(name, handler);
}

}  // namespace tarnix::qt6
