#pragma once

#include "probe/platform/overlay_surface.h"

namespace tarnix::qt6 {

class QtOverlaySurfaces : public platform::OverlaySurfaces {
 public:
  static QtOverlaySurfaces& shared();

  std::unique_ptr<platform::OverlaySurface> makeSurface(platform::WindowScene& scene) override;
  platform::Size sizeOf(std::string_view text, const platform::Font& font) override;

 private:
  QtOverlaySurfaces() = default;
};

}  // namespace tarnix::qt6
