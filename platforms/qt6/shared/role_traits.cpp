#include "platforms/qt6/shared/role_traits.h"

namespace tarnix::qt6 {

namespace traits = platform::accessibility_traits;

std::optional<platform::AccessibilityTraits> traitsOfRole(QAccessible::Role role) {
  switch (role) {
    case QAccessible::Button:
    case QAccessible::ButtonDropDown:
    case QAccessible::ButtonDropGrid:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::ComboBox:
    case QAccessible::MenuItem:
    case QAccessible::PageTab:
    case QAccessible::RadioButton:
      return traits::button;
    case QAccessible::Link:
      return traits::link;
    case QAccessible::Animation:
    case QAccessible::Chart:
    case QAccessible::Graphic:
      return traits::image;
    case QAccessible::Note:
    case QAccessible::Paragraph:
    case QAccessible::StaticText:
      return traits::staticText;
    case QAccessible::ColumnHeader:
    case QAccessible::Heading:
    case QAccessible::RowHeader:
      return traits::header;
    case QAccessible::Dial:
    case QAccessible::ScrollBar:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
      return traits::adjustable;
    case QAccessible::PageTabList:
      return traits::tabBar;
    case QAccessible::Application:
    case QAccessible::Client:
    case QAccessible::ColorChooser:
    case QAccessible::ComplementaryContent:
    case QAccessible::Desktop:
    case QAccessible::Dialog:
    case QAccessible::Document:
    case QAccessible::Footer:
    case QAccessible::Form:
    case QAccessible::Grouping:
    case QAccessible::LayeredPane:
    case QAccessible::List:
    case QAccessible::MenuBar:
    case QAccessible::Pane:
    case QAccessible::PopupMenu:
    case QAccessible::PropertyPage:
    case QAccessible::Section:
    case QAccessible::Separator:
    case QAccessible::Splitter:
    case QAccessible::Table:
    case QAccessible::TitleBar:
    case QAccessible::ToolBar:
    case QAccessible::Tree:
    case QAccessible::WebDocument:
    case QAccessible::Window:
      return std::nullopt;
    default:
      return traits::none;
  }
}

bool isCheckableRole(QAccessible::Role role) {
  return role == QAccessible::CheckBox || role == QAccessible::RadioButton;
}

}  // namespace tarnix::qt6
