#pragma once

#include "probe/platform/url_opener.h"

namespace tarnix::qt6 {

/// The toolkit's desktop services: a handler that the application registered for the scheme comes
/// before the desktop's.
class QtUrlOpener : public platform::UrlOpener {
 public:
  static QtUrlOpener& shared();

  void open(const Url& url) override;

 private:
  QtUrlOpener() = default;
};

}  // namespace tarnix::qt6
