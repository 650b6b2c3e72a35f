#pragma once

#include <QString>

class QWidget;

namespace tarnix::qt6 {

/// What a button is for that the toolkit itself adds to its widgets with a sign and no word: to
/// empty a field, to turn a calendar's page, to show what does not fit into a tool bar. Empty for
/// any other. Main thread.
QString nameOfBareButton(const QWidget& button);

}  // namespace tarnix::qt6
