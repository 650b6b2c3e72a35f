#pragma once

#include <memory>
#include <optional>
#include <string>

#include "probe/overlay/blur_layer.h"
#include "probe/overlay/gradient_layer.h"
#include "probe/overlay/label.h"
#include "probe/overlay/layer.h"
#include "probe/overlay/probe_tool_category.h"

namespace tarnix {

/// The pill that names the tool at work: its icon, and a word or a short detail, over a band of
/// light that keeps passing. Main thread.
class ProbeOrbView : public overlay::Layer {
 public:
  static constexpr platform::Size orbSize{140, 36};
  /// Under which the band of light moves.
  static constexpr const char* shimmerKey = "shimmer";

  explicit ProbeOrbView(const platform::Rect& frame);

  /// Without a detail it shows the category's label.
  void configure(ProbeToolCategory category, const std::optional<std::string>& detail);

  const overlay::BlurLayer& blurView() const { return *blurView_; }
  const overlay::Label& iconLabel() const { return *iconLabel_; }
  const overlay::Label& textLabel() const { return *textLabel_; }
  const overlay::GradientLayer& glowLayer() const { return *glowLayer_; }
  /// The band's movement while there is one.
  const overlay::Animation* pulseAnimation() const { return glowLayer_->animation(shimmerKey); }

 private:
  void setup();

  std::shared_ptr<overlay::BlurLayer> blurView_;
  std::shared_ptr<overlay::Label> iconLabel_;
  std::shared_ptr<overlay::Label> textLabel_;
  std::shared_ptr<overlay::GradientLayer> glowLayer_;
};

}  // namespace tarnix
