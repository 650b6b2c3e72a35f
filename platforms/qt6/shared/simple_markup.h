#pragma once

#include <optional>

#include "platforms/qt6/shared/visible_text.h"

namespace tarnix::qt6 {

/// What a rich text reads that is made of letters in bold, colours, links and line breaks, as most
/// are; absent when there is more to it. A document reads any, at a hundred times the cost, and a
/// screen may have a thousand such texts.
std::optional<VisibleText> readSimpleMarkup(const QString& text);

}  // namespace tarnix::qt6
