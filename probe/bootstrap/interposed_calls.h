#pragma once

#include <atomic>

namespace tarnix {

/// The calls between host and toolkit that the preloaded library stands in front of, since only a
/// library that was loaded first can. Each goes on to the toolkit as if nothing were there until
/// the toolkit's module has put a function of its own in the place. Plain types only: the preloaded
/// library links no C++ library. Any thread.
struct InterposedCalls {
  /// Runs after each session of URL loading that the host makes, on the thread that made it. Null
  /// before the toolkit's module is there.
  std::atomic<void (*)()> sessionWasMade = nullptr;
  /// Whether a session was made while `sessionWasMade` was null.
  std::atomic<bool> missedSessions = false;
  /// Makes a request in the place of the toolkit: session, kind of request, request, body.
  std::atomic<void* (*)(void*, int, const void*, void*)> createRequest = nullptr;
  /// Runs when the host is about to make web views: a library for them has come in with QML, or the
  /// first page of its own is to be made. Again and again, on the thread that does so. Null before
  /// the toolkit's module is there.
  std::atomic<void (*)()> webViewsAreComing = nullptr;
};

}  // namespace tarnix
