#pragma once

#include "platforms/qt6/webengine/posted_message.h"

/// Calls to a page's console that a user script of ours passes on. To the engine they stand in that
/// script; the application is to see where the page made them. Main thread.
namespace tarnix::qt6::moved_calls {

/// The call that goes with a message comes next from that document, unless another script keeps it
/// from coming. `page` stands for what shows the document and its frames; it is not touched.
void expect(const void* page, const PostedMessage& message);

/// Where a line of the page's console was written. That is what was reported when no script of ours
/// passed it on, or when the page keeps the engine from telling.
CallSite original(const void* page, const QString& message, CallSite reported);

/// Calls that `page` announced come no more: it is new, and another one lay there before.
void forget(const void* page);

}  // namespace tarnix::qt6::moved_calls
