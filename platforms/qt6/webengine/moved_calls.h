#pragma once

#include "platforms/qt6/webengine/posted_message.h"

/// Calls to a page's console that a user script of ours passes on. To the engine they stand in that
/// script; the application is to see where the page made them. Main thread.
namespace tarnix::qt6::moved_calls {

/// The call that goes with a message comes next from that document, unless another script keeps it
/// from coming.
void expect(const PostedMessage& message);

/// Where a line of the console was written. That is what was reported when no script of ours passed
/// it on, or when the page keeps the engine from telling.
CallSite original(const QString& message, CallSite reported);

}  // namespace tarnix::qt6::moved_calls
