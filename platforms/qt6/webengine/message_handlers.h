#pragma once

#include <string>
#include <string_view>

#include "probe/platform/web_view.h"

/// Who hears what user scripts post, by name, for every page of the application. Main thread.
namespace tarnix::qt6::message_handlers {

/// A later handler takes the place of an earlier one of the same name.
void set(std::string_view name, platform::ScriptMessageHandler& handler);

/// Goes nowhere when nobody listens to that name.
void deliver(platform::UserContentController& controller, const std::string& name,
             const platform::ScriptMessage& message);

}  // namespace tarnix::qt6::message_handlers
