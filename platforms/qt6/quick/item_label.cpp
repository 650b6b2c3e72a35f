#include "platforms/qt6/quick/item_label.h"

#include <QMetaObject>
#include <QMetaProperty>
#include <QQuickItem>
#include <QVariant>
#include <algorithm>
#include <vector>

#include "platforms/qt6/quick/item_description.h"
#include "platforms/qt6/quick/text_nearby.h"
#include "platforms/qt6/shared/icon_label.h"
#include "platforms/qt6/shared/role_traits.h"
#include "platforms/qt6/shared/visible_text.h"

namespace tarnix::qt6 {

namespace {

// Buttons are built of a handful of items; whoever builds one of more gives it a name.
constexpr int largestButton = 64;

bool isControl(ItemKind kind) {
  switch (kind) {
    case ItemKind::plain:
    case ItemKind::rectangle:
    case ItemKind::text:
    case ItemKind::image:
      return false;
    default:
      return true;
  }
}

/// What a button is drawn with.
struct Drawn {
  std::vector<QString> texts;
  /// The file of the picture that is found first; empty when there is none.
  QString picture;
};

/// Nothing when there are other controls inside `button`.
Drawn drawnInside(const QQuickItem& button) {
  Drawn drawn;
  std::vector<const QQuickItem*> pending = {&button};
  for (int visits = 0; !pending.empty() && visits < largestButton; ++visits) {
    const QQuickItem* const item = pending.back();
    pending.pop_back();
    for (const QQuickItem* child : item->childItems()) {
      if (!child->isVisible() || child->opacity() < smallestVisibleOpacity) {
        continue;
      }
      const ItemClass& childClass = classOf(*child);
      if (isControl(childClass.kind)) {
        return {};
      }
      if (childClass.kind == ItemKind::text) {
        const auto format = static_cast<TextFormat>(childClass.textFormat.integer(*child));
        const QString text = visibleText(childClass.text.string(*child), format).text;
        if (!text.trimmed().isEmpty()) {
          drawn.texts.push_back(text);
        }
      } else if (childClass.kind == ItemKind::image && drawn.picture.isEmpty()) {
        drawn.picture = child->property("source").toString();
      }
      pending.push_back(child);
    }
  }
  return pending.empty() ? drawn : Drawn();
}

QString firstOf(const QString& first, const QString& second, const QString& third = {}) {
  return !first.isEmpty() ? first : !second.isEmpty() ? second : third;
}

/// The name or the file of the picture on a button.
QString iconOf(const QQuickItem& button) {
  const QVariant icon = button.property("icon");
  const QMetaObject* const group = icon.metaType().metaObject();
  if (group == nullptr) {
    return {};
  }
  for (const char* member : {"name", "source"}) {
    const int index = group->indexOfProperty(member);
    const QString text =
        index < 0 ? QString() : group->property(index).readOnGadget(icon.constData()).toString();
    if (!text.isEmpty()) {
      return text;
    }
  }
  return {};
}

QString buttonLabel(const QQuickItem& item, const ItemClass& itemClass,
                    const AttachedProperties& attached) {
  const QString text = itemClass.text.string(item);
  const QString label = withoutMnemonic(text, ParenthesisedMnemonic::removed);
  // Most buttons underline the mnemonic, or hide it. Some kinds show the text as it is.
  const bool isMarkup = text.contains(u'<');
  if (!text.trimmed().isEmpty() && label == text && !isMarkup) {
    return text;
  }
  const Drawn drawn = drawnInside(item);
  const std::vector<QString>& shown = drawn.texts;
  if (isMarkup) {
    // Most buttons draw it as what it means.
    const QString meaning = visibleText(text, TextFormat::automatic).text;
    if (std::find(shown.begin(), shown.end(), meaning) != shown.end()) {
      return meaning;
    }
  }
  for (const QString& candidate : shown) {
    if (!text.isEmpty() && candidate == text) {
      return text;
    }
  }
  if (!label.trimmed().isEmpty()) {
    return label;
  }
  // One that draws its text itself. Of several texts each stays an element of its own.
  if (shown.size() == 1) {
    return shown.front();
  }
  if (!shown.empty() || !attached.toolTip().isEmpty() || !text.isEmpty()) {
    return firstOf(attached.toolTip(), text);
  }
  const QString icon = labelOfIcon(iconOf(item));
  return icon.isEmpty() ? labelOfIcon(drawn.picture) : icon;
}

bool isPassword(const QQuickItem& item, const ItemClass& itemClass,
                const AttachedProperties& attached) {
  constexpr int normalEcho = 0;
  const Qt::InputMethodHints hints(itemClass.inputMethodHints.integer(item));
  return attached.isPasswordEdit() || itemClass.echoMode.integer(item) != normalEcho ||
         hints.testFlag(Qt::ImhHiddenText);
}

QString beginningOfEdit(const QQuickItem& item) {
  // A plain method, since the text property of an edit with rich text is markup.
  QString text;
  QMetaObject::invokeMethod(const_cast<QQuickItem*>(&item), "getText", Qt::DirectConnection,
                            Q_RETURN_ARG(QString, text), Q_ARG(int, 0),
                            Q_ARG(int, maximumTextLength));
  text.replace(QChar::ParagraphSeparator, u'\n');
  text.replace(QChar::LineSeparator, u'\n');
  return text;
}

}  // namespace

std::optional<QString> fieldText(const QQuickItem& item, const ItemClass& itemClass,
                                 const AttachedProperties& attached) {
  constexpr int noEcho = 1;
  if (isPassword(item, itemClass, attached)) {
    if (itemClass.echoMode.integer(item) == noEcho) {
      return std::nullopt;
    }
    const QString mask = itemClass.passwordCharacter.string(item);
    const auto length = qsizetype{itemClass.length.integer(item)};
    return QString(std::min<qsizetype>(length, maximumTextLength),
                   mask.isEmpty() ? QChar(0x2022) : mask.front());
  }
  if (itemClass.kind == ItemKind::textEdit) {
    return beginningOfEdit(item);
  }
  return itemClass.displayText.string(item).left(maximumTextLength);
}

QString labelOf(const QQuickItem& item, const ItemClass& itemClass,
                const AttachedProperties& attached) {
  // While a screen reader runs the library names its own buttons by their text, marks and all.
  if (!attached.name().isEmpty() && attached.name() != itemClass.text.string(item)) {
    return attached.name();
  }
  switch (itemClass.kind) {
    case ItemKind::text: {
      const auto format = static_cast<TextFormat>(itemClass.textFormat.integer(item));
      return visibleText(itemClass.text.string(item), format).text;
    }
    case ItemKind::button:
    case ItemKind::toggle:
    case ItemKind::tab:
    case ItemKind::menuEntry:
      return buttonLabel(item, itemClass, attached);
    case ItemKind::textInput:
    case ItemKind::textEdit:
    case ItemKind::searchField: {
      const QString placeholder = itemClass.placeholderText.string(item);
      if (!placeholder.trimmed().isEmpty()) {
        return placeholder;
      }
      if (const QString beside = textNearby(item); !beside.isEmpty()) {
        return beside;
      }
      if (!attached.toolTip().isEmpty()) {
        return attached.toolTip();
      }
      // What a person sees of a field without a name is what stands in it.
      return isPassword(item, itemClass, attached)
                 ? QString()
                 : fieldText(item, itemClass, attached).value_or(QString());
    }
    case ItemKind::comboBox:
    case ItemKind::spinBox:
      return firstOf(textNearby(item), attached.toolTip(), itemClass.displayText.string(item));
    case ItemKind::adjustable:
    case ItemKind::rangeSlider:
    case ItemKind::progressBar:
      return firstOf(textNearby(item), attached.toolTip());
    case ItemKind::image:
    case ItemKind::tabBar:
    case ItemKind::groupBox:
    case ItemKind::flickable:
    case ItemKind::itemView:
    case ItemKind::tableView:
    case ItemKind::headerView:
    case ItemKind::pathView:
      return {};
    case ItemKind::plain:
    case ItemKind::rectangle:
      break;
  }
  if (!attached.role() || !traitsOfRole(*attached.role())) {
    return {};
  }
  // An item that its application made a control of.
  for (const Property* property : {&itemClass.text, &itemClass.placeholderText, &itemClass.title}) {
    const QString text = property->string(item);
    if (!text.trimmed().isEmpty()) {
      return withoutMnemonic(text, ParenthesisedMnemonic::removed);
    }
  }
  const std::vector<QString> shown = drawnInside(item).texts;
  return shown.size() == 1 ? shown.front() : attached.toolTip();
}

}  // namespace tarnix::qt6
