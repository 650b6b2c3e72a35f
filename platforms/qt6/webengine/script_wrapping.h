#pragma once

#include <QString>
#include <string_view>

namespace tarnix::qt6 {

/// What user scripts of ours are called, in the engine and in the stacks of a page.
inline constexpr const char* ownScriptName = "tarnixprobe";
inline constexpr const char* ownScriptSource = "userscript:tarnixprobe";

/// What each message to us begins with. Pages cannot know it: it is made anew with each process.
const QString& messageMark();

/// `source`, in UTF-8, with what it finds at `window.webkit.messageHandlers`. The page itself finds
/// nothing there.
QString wrap(std::string_view source);

}  // namespace tarnix::qt6
