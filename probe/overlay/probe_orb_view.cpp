#include "probe/overlay/probe_orb_view.h"

#include "probe/overlay/system_colors.h"

namespace tarnix {

namespace {

constexpr double orbCornerRadius = 18;
constexpr double orbBorderWidth = 1.5;
constexpr double blurRadius = 6;
// Dark enough for each of the categories' colours to be read over any background.
constexpr platform::Color blurTint{0.09, 0.09, 0.11, 0.78};

}  // namespace

ProbeOrbView::ProbeOrbView(const platform::Rect& frame)
    : Layer(frame),
      blurView_(std::make_shared<overlay::BlurLayer>(bounds())),
      iconLabel_(std::make_shared<overlay::Label>(platform::Rect{{6, 0}, {24, orbSize.height}})),
      textLabel_(std::make_shared<overlay::Label>(
          platform::Rect{{30, 0}, {frame.size.width - 36, orbSize.height}})),
      glowLayer_(std::make_shared<overlay::GradientLayer>(bounds())) {
  setup();
}

void ProbeOrbView::setup() {
  cornerRadius = orbCornerRadius;
  clipsToBounds = true;
  borderWidth = orbBorderWidth;
  borderColor = overlay::colors::systemBlue.withAlpha(0.6);
  blurView_->radius = blurRadius;
  blurView_->tint = blurTint;
  glowLayer_->cornerRadius = orbCornerRadius;
  blurView_->add(glowLayer_);
  add(blurView_);
  iconLabel_->font = {.size = 13};
  add(iconLabel_);
  textLabel_->font = {.size = 10, .isMonospaced = true};
  textLabel_->alignment = platform::TextLine::Alignment::leading;
  add(textLabel_);
}

void ProbeOrbView::configure(ProbeToolCategory category, const std::optional<std::string>& detail) {
  const platform::Color toolColor = color(category);
  iconLabel_->text = icon(category);
  iconLabel_->textColor = toolColor;
  textLabel_->text = detail ? *detail : std::string(label(category));
  textLabel_->textColor = toolColor;
  borderColor = toolColor.withAlpha(0.5);
  glowLayer_->stops = {
      {0, toolColor.withAlpha(0)}, {0.5, toolColor.withAlpha(0.15)}, {1, toolColor.withAlpha(0)}};
  glowLayer_->removeAnimation(shimmerKey);
  glowLayer_->addAnimation(shimmerKey, {.property = overlay::Property::positionX,
                                        .from = -size().width,
                                        .to = 2 * size().width,
                                        .duration = 1.2,
                                        .repeatsForever = true});
}

}  // namespace tarnix
