#include "platforms/qt6/webengine/message_handlers.h"

#include <map>

namespace tarnix::qt6::message_handlers {

namespace {

using Handlers = std::map<std::string, platform::ScriptMessageHandler*, std::less<>>;

Handlers& handlers() {
  static Handlers& instance = *new Handlers;
  return instance;
}

}  // namespace

void set(std::string_view name, platform::ScriptMessageHandler& handler) {
  handlers().insert_or_assign(std::string(name), &handler);
}

void deliver(platform::UserContentController& controller, const std::string& name,
             const platform::ScriptMessage& message) {
  if (const auto found = handlers().find(name); found != handlers().end()) {
    found->second->userContentController(controller, message);
  }
}

}  // namespace tarnix::qt6::message_handlers
