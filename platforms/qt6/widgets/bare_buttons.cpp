#include "platforms/qt6/widgets/bare_buttons.h"

#include <QAction>
#include <QToolButton>
#include <array>

namespace tarnix::qt6 {

namespace {

struct BareButton {
  const char* objectName;
  const char* label;
};

// The toolkit names them for style sheets, which keeps these names the same over its versions.
constexpr std::array bareButtons = {
    BareButton{"qt_toolbar_ext_button", "More"},
    BareButton{"qt_calendar_prevmonth", "Previous month"},
    BareButton{"qt_calendar_nextmonth", "Next month"},
    BareButton{"_q_qlineeditclearaction", "Clear"},
};

}  // namespace

QString nameOfBareButton(const QWidget& button) {
  const auto* const tool = qobject_cast<const QToolButton*>(&button);
  if (tool == nullptr) {
    return {};
  }
  const QAction* const action = tool->defaultAction();
  for (const BareButton& bare : bareButtons) {
    const QLatin1String name(bare.objectName);
    if (tool->objectName() == name || (action != nullptr && action->objectName() == name)) {
      return QString::fromLatin1(bare.label);
    }
  }
  return {};
}

}  // namespace tarnix::qt6
