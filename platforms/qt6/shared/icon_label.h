#pragma once

#include <QString>

namespace tarnix::qt6 {

/// What a picture's file or theme name says of it, for buttons that show nothing else:
/// "qrc:/images/go-previous.svg" reads "go previous". Empty for names that say nothing to a person:
/// data, and what is left of a name without letters.
QString labelOfIcon(const QString& nameOrSource);

}  // namespace tarnix::qt6
