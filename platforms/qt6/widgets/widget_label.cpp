#include "platforms/qt6/widgets/widget_label.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDockWidget>
#include <QGroupBox>
#include <QIcon>
#include <QLCDNumber>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStatusBar>
#include <QStyle>
#include <QTextEdit>

#include "platforms/qt6/shared/icon_label.h"
#include "platforms/qt6/widgets/bare_buttons.h"
#include "platforms/qt6/widgets/buddies.h"
#include "platforms/qt6/widgets/label_nearby.h"

namespace tarnix::qt6 {

namespace {

QString withoutShownMnemonic(const QString& text) {
  return withoutMnemonic(text, ParenthesisedMnemonic::shown);
}

QString firstOf(std::initializer_list<QString> candidates) {
  for (const QString& candidate : candidates) {
    if (!candidate.trimmed().isEmpty()) {
      return candidate;
    }
  }
  // One of nothing but spaces is a mistake that somebody may want to find.
  return candidates.size() == 0 ? QString() : *candidates.begin();
}

bool isPassword(const QLineEdit& field) {
  return field.echoMode() != QLineEdit::Normal ||
         field.inputMethodHints().testFlag(Qt::ImhHiddenText);
}

std::optional<QString> textOfField(const QLineEdit& field) {
  if (field.echoMode() == QLineEdit::NoEcho) {
    return std::nullopt;
  }
  if (isPassword(field)) {
    const int mask =
        field.style()->styleHint(QStyle::SH_LineEdit_PasswordCharacter, nullptr, &field);
    const qsizetype length = std::min<qsizetype>(field.text().size(), maximumTextLength);
    return QString(length, QChar(static_cast<char16_t>(mask)));
  }
  return field.displayText().left(maximumTextLength);
}

QString placeholderOf(const QWidget& widget) {
  // The three kinds of fields, combo boxes and an application's own all call it the same.
  return widget.property("placeholderText").toString();
}

/// What stands in a field or box that has no other name.
QString contentOf(const QWidget& widget, WidgetKind kind) {
  const auto* const field = qobject_cast<const QLineEdit*>(&widget);
  if (field != nullptr && isPassword(*field)) {
    return {};
  }
  return valueOf(widget, kind).value_or(QString());
}

/// A title says with "[*]" where to mark what is not saved yet, and with two of them that it means
/// one of itself.
QString shownTitle(const QWidget& widget) {
  static const QString place = QStringLiteral("[*]");
  const QString title = widget.windowTitle();
  QString shown;
  qsizetype position = 0;
  while (position < title.size()) {
    const bool isPlace = QStringView(title).sliced(position).startsWith(place);
    const bool isDoubled =
        isPlace && QStringView(title).sliced(position + place.size()).startsWith(place);
    if (isDoubled) {
      shown += place;
      position += 2 * place.size();
    } else if (isPlace) {
      shown += widget.isWindowModified() ? QStringLiteral("*") : QString();
      position += place.size();
    } else {
      shown += title[position++];
    }
  }
  return shown;
}

QString shownByProgressBar(const QProgressBar& bar) {
  return bar.isTextVisible() ? bar.text() : QString();
}

}  // namespace

VisibleText textOfLabel(const QLabel& label) {
  auto format = TextFormat::automatic;
  switch (label.textFormat()) {
    case Qt::PlainText:
      format = TextFormat::plain;
      break;
    case Qt::RichText:
      format = TextFormat::rich;
      break;
    case Qt::MarkdownText:
      format = TextFormat::markdown;
      break;
    case Qt::AutoText:
      break;
  }
  VisibleText result = visibleText(label.text(), format);
  // Only a label that leads to a field has a shortcut; any other shows the mark.
  if (label.buddy() != nullptr) {
    result.text = withoutShownMnemonic(result.text);
  }
  return result;
}

QString labelOf(const QWidget& widget, WidgetKind kind, const Buddies* buddies) {
  const QString name = widget.accessibleName();
  switch (kind) {
    case WidgetKind::label:
      return firstOf({name, textOfLabel(static_cast<const QLabel&>(widget)).text});
    case WidgetKind::button:
    case WidgetKind::toggle:
      return firstOf({withoutShownMnemonic(static_cast<const QAbstractButton&>(widget).text()),
                      name, plainText(widget.toolTip()),
                      labelOfIcon(static_cast<const QAbstractButton&>(widget).icon().name()),
                      nameOfBareButton(widget), plainText(widget.statusTip()),
                      plainText(widget.whatsThis())});
    case WidgetKind::lineEdit:
    case WidgetKind::textEdit:
    case WidgetKind::plainTextEdit:
    case WidgetKind::comboBox:
    case WidgetKind::spinBox: {
      QString label = firstOf({name, Buddies::textFor(buddies, widget), placeholderOf(widget)});
      return label.isEmpty() ? firstOf({labelNearby(widget), plainText(widget.toolTip()),
                                        contentOf(widget, kind)})
                             : label;
    }
    case WidgetKind::slider:
      return firstOf({name, Buddies::textFor(buddies, widget), labelNearby(widget),
                      plainText(widget.toolTip())});
    case WidgetKind::progressBar:
      return firstOf({name, Buddies::textFor(buddies, widget), labelNearby(widget),
                      shownByProgressBar(static_cast<const QProgressBar&>(widget))});
    case WidgetKind::lcdNumber:
      // It is a text of its own, whatever stands beside it: what it shows is what is read.
      return contentOf(widget, kind);
    case WidgetKind::groupBox:
      return firstOf({withoutShownMnemonic(static_cast<const QGroupBox&>(widget).title())});
    case WidgetKind::statusBar:
      return static_cast<const QStatusBar&>(widget).currentMessage();
    case WidgetKind::dockWidget:
      // The title bar shows marks of shortcuts as they are.
      return static_cast<const QDockWidget&>(widget).titleBarWidget() == nullptr
                 ? shownTitle(widget)
                 : QString();
    case WidgetKind::subWindow:
      return shownTitle(widget);
    case WidgetKind::tabBar:
    case WidgetKind::plain:
      return name;
    case WidgetKind::menuBar:
    case WidgetKind::menu:
    case WidgetKind::header:
    case WidgetKind::itemView:
    case WidgetKind::columnView:
    case WidgetKind::scrollArea:
    case WidgetKind::subWindowControls:
    case WidgetKind::graphicsView:
    case WidgetKind::quickWidget:
    case WidgetKind::windowContainer:
      break;
  }
  return {};
}

std::optional<QString> valueOf(const QWidget& widget, WidgetKind kind) {
  switch (kind) {
    case WidgetKind::toggle: {
      const auto* const box = qobject_cast<const QCheckBox*>(&widget);
      if (box != nullptr && box->checkState() == Qt::PartiallyChecked) {
        return QStringLiteral("mixed");
      }
      return static_cast<const QAbstractButton&>(widget).isChecked() ? QStringLiteral("1")
                                                                     : QStringLiteral("0");
    }
    case WidgetKind::button: {
      const auto* const command = qobject_cast<const QCommandLinkButton*>(&widget);
      return command == nullptr || command->description().isEmpty()
                 ? std::nullopt
                 : std::optional(command->description());
    }
    case WidgetKind::groupBox: {
      const auto& box = static_cast<const QGroupBox&>(widget);
      if (!box.isCheckable()) {
        return std::nullopt;
      }
      return box.isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    }
    case WidgetKind::lineEdit:
      return textOfField(static_cast<const QLineEdit&>(widget));
    case WidgetKind::textEdit:
      return beginningOf(*static_cast<const QTextEdit&>(widget).document());
    case WidgetKind::plainTextEdit:
      return beginningOf(*static_cast<const QPlainTextEdit&>(widget).document());
    case WidgetKind::comboBox:
      return static_cast<const QComboBox&>(widget).currentText();
    case WidgetKind::spinBox:
      return static_cast<const QAbstractSpinBox&>(widget).text();
    case WidgetKind::slider:
      return QString::number(static_cast<const QAbstractSlider&>(widget).value());
    case WidgetKind::progressBar: {
      const auto& bar = static_cast<const QProgressBar&>(widget);
      const QString text = shownByProgressBar(bar);
      return text.isEmpty() ? QString::number(bar.value()) : text;
    }
    case WidgetKind::lcdNumber:
      return QString::number(static_cast<const QLCDNumber&>(widget).value());
    default:
      return std::nullopt;
  }
}

}  // namespace tarnix::qt6
