#pragma once

#include <atomic>

namespace tarnix {

/// What happens to the picture of a window that the toolkit keeps in memory, its backing store.
/// Painting may go on within painting.
struct PictureChange {
  enum class Kind {
    willPaint,
    didPaint,
    willScroll,
    didScroll,
    /// Another picture takes its place, which may be given what the old one showed.
    willBeReplaced,
  };

  Kind kind;
  void* backingStore;
  /// The toolkit's region that is painted or moved; null where that was told before.
  const void* region = nullptr;
  /// By how much it was moved; nothing where the toolkit could not.
  int x = 0;
  int y = 0;
};

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
  /// Is told of each change, on the thread that makes it. Null while nobody needs to know.
  std::atomic<void (*)(const PictureChange&)> pictureChanges = nullptr;
};

}  // namespace tarnix
