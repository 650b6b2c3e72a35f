#pragma once

namespace tarnix::integration {

/// Lists, tables, trees and an area that scrolls.
void showViews();

/// Ten thousand labels in an area that scrolls.
void showMany();

}  // namespace tarnix::integration
