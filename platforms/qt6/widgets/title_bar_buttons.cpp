#include "platforms/qt6/widgets/title_bar_buttons.h"

#include <QMdiSubWindow>
#include <QStyle>
#include <QStyleOptionTitleBar>

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;

struct Button {
  QStyle::SubControl control;
  const char* label;
};

std::vector<PlainItem::Description> buttonsOf(const QWidget& widget, QStyle::ComplexControl control,
                                              const QStyleOptionComplex& option,
                                              const std::vector<Button>& buttons) {
  std::vector<PlainItem::Description> result;
  for (const Button& button : buttons) {
    const QRect area = widget.style()->subControlRect(control, &option, button.control, &widget);
    // Where a style has no place for one, it says that nothing or everything is.
    if (area.isEmpty() || area == option.rect) {
      continue;
    }
    PlainItem::Description description;
    description.label = QString::fromLatin1(button.label);
    description.area = area;
    description.traits = widget.isEnabled() ? traits::button : traits::button | traits::notEnabled;
    result.push_back(std::move(description));
  }
  return result;
}

}  // namespace

std::vector<PlainItem::Description> titleBarButtons(const QMdiSubWindow& window) {
  const Qt::WindowFlags flags = window.windowFlags();
  const QWidget* const content = window.widget();
  // One that fills its area may show its buttons in the menu bar instead.
  const bool isTitleShown = content == nullptr || !content->isVisible() || content->y() > 0;
  if (!isTitleShown || !flags.testFlag(Qt::WindowTitleHint) ||
      flags.testFlag(Qt::FramelessWindowHint)) {
    return {};
  }
  QStyleOptionTitleBar option;
  option.initFrom(&window);
  option.subControls = QStyle::SC_All;
  option.titleBarFlags = flags;
  option.titleBarState = static_cast<int>(window.windowState());
  option.rect.setHeight(window.style()->pixelMetric(QStyle::PM_TitleBarHeight, &option, &window));
  std::vector<Button> buttons;
  const bool isMinimized = window.isMinimized();
  const bool isMaximized = window.isMaximized();
  if (flags.testFlag(Qt::WindowMinimizeButtonHint) && !isMinimized) {
    buttons.push_back({QStyle::SC_TitleBarMinButton, "Minimize"});
  }
  if ((flags.testFlag(Qt::WindowMinimizeButtonHint) && isMinimized) ||
      (flags.testFlag(Qt::WindowMaximizeButtonHint) && isMaximized)) {
    buttons.push_back({QStyle::SC_TitleBarNormalButton, "Restore"});
  }
  if (flags.testFlag(Qt::WindowMaximizeButtonHint) && !isMaximized) {
    buttons.push_back({QStyle::SC_TitleBarMaxButton, "Maximize"});
  }
  if (flags.testFlag(Qt::WindowSystemMenuHint)) {
    buttons.push_back({QStyle::SC_TitleBarSysMenu, "System menu"});
    buttons.push_back({QStyle::SC_TitleBarCloseButton, "Close"});
  }
  return buttonsOf(window, QStyle::CC_TitleBar, option, buttons);
}

std::vector<PlainItem::Description> controlButtons(const QWidget& controls) {
  QStyleOptionComplex option;
  option.initFrom(&controls);
  option.subControls =
      QStyle::SC_MdiMinButton | QStyle::SC_MdiNormalButton | QStyle::SC_MdiCloseButton;
  return buttonsOf(controls, QStyle::CC_MdiControls, option,
                   {{QStyle::SC_MdiMinButton, "Minimize"},
                    {QStyle::SC_MdiNormalButton, "Restore"},
                    {QStyle::SC_MdiCloseButton, "Close"}});
}

}  // namespace tarnix::qt6
