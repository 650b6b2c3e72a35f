#pragma once

#include <string>

#include "probe/overlay/layer.h"

namespace tarnix::overlay {

/// One line of text.
class Label : public Layer {
 public:
  using Layer::Layer;

  std::string text;
  platform::Font font;
  platform::Color textColor;
  platform::TextLine::Alignment alignment = platform::TextLine::Alignment::centered;

 protected:
  std::optional<platform::Shape> content(double) const override {
    return platform::TextLine{bounds(), text, font, textColor, alignment};
  }
};

}  // namespace tarnix::overlay
