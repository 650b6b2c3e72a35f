#pragma once

#include "probe/platform/application.h"

namespace tarnix::qt6 {

class QtApplication : public platform::Application {
 public:
  static QtApplication& shared();

  std::vector<std::shared_ptr<platform::WindowScene>> connectedScenes() const override;

 private:
  QtApplication() = default;
};

}  // namespace tarnix::qt6
