#pragma once

#include "probe/platform/web_view.h"

namespace tarnix::qt6 {

/// What the pages of one profile are given. Scripts belong to a profile here, so a page brings them
/// to all pages of its profile. Main thread.
class PageContentController : public platform::UserContentController {
 public:
  /// `profile` is the engine's own object, which outlives this one; null does no harm.
  explicit PageContentController(void* profile) : profile_(profile) {}

  void addUserScript(const platform::UserScript& script) override;
  void add(platform::ScriptMessageHandler& handler, std::string_view name) override;

 private:
  void* profile_;
};

}  // namespace tarnix::qt6
