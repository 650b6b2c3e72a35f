#include "tests/integration/screen_names/widget_window.h"

#include <QDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QMetaObject>
#include <QQuickItem>
#include <QQuickWidget>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolBox>
#include <QVariant>
#include <QWizard>

#include "tests/integration/screen_names/private_library.h"

class InboxPage : public QWidget {};
class MessageScreen : public QWidget {};
class UserProfileDetailViewController : public QWidget {};
class ChartSheet : public QWidget {};
class TableSheet : public QWidget {};
class BrushToolsController : public QWidget {};
class ColourToolsController : public QWidget {};
class WelcomePage : public QWizardPage {};
class PasswordScreen : public QWizardPage {};
class AccountWizard : public QWizard {
 public:
  using QWizard::QWizard;
};
class LoginVC : public QDialog {
 public:
  using QDialog::QDialog;
};

namespace tarnix::integration {

namespace {

template <class Page>
Page* page(const char* text) {
  auto* const result = new Page;
  new QLabel(QString::fromUtf8(text), result);
  return result;
}

QMdiArea* sheets() {
  auto* const area = new QMdiArea;
  area->addSubWindow(page<ChartSheet>("Chart"))->setWindowTitle(QStringLiteral("Chart"));
  area->addSubWindow(page<TableSheet>("Table"))->setWindowTitle(QStringLiteral("Table"));
  for (QMdiSubWindow* sheet : area->subWindowList()) {
    sheet->resize(300, 200);
  }
  return area;
}

QToolBox* tools() {
  auto* const box = new QToolBox;
  box->addItem(page<BrushToolsController>("A brush"), QStringLiteral("Brushes"));
  box->addItem(page<ColourToolsController>("A colour"), QStringLiteral("Colours"));
  return box;
}

}  // namespace

MainWindow::MainWindow() {
  tabs_ = new QTabWidget;
  pages_ = new QStackedWidget;
  pages_->addWidget(page<InboxPage>("Inbox"));
  pages_->addWidget(page<MessageScreen>("One message"));
  tabs_->addTab(pages_, QStringLiteral("Mail"));
  tabs_->addTab(page<UserProfileDetailViewController>("Profile"), QStringLiteral("Profile"));
  tabs_->addTab(page<QWidget>("Plain"), QStringLiteral("Plain"));
  tabs_->addTab(new ReportScreen, QStringLiteral("Report"));
  sheets_ = sheets();
  tabs_->addTab(sheets_, QStringLiteral("Sheets"));
  tools_ = tools();
  tabs_->addTab(tools_, QStringLiteral("Tools"));
  setCentralWidget(tabs_);
  setWindowTitle(QStringLiteral("Mail"));
  resize(500, 400);
}

void MainWindow::act(const QString& word, int number) {
  const auto open = [this](QWidget* dialog) {
    dialog_ = dialog;
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->show();
  };
  if (word == QLatin1String("tab")) {
    tabs_->setCurrentIndex(number);
  } else if (word == QLatin1String("page")) {
    pages_->setCurrentIndex(number);
  } else if (word == QLatin1String("sheet")) {
    sheets_->setActiveSubWindow(sheets_->subWindowList().at(number));
  } else if (word == QLatin1String("tool")) {
    tools_->setCurrentIndex(number);
  } else if (word == QLatin1String("scene")) {
    showScene();
  } else if (word == QLatin1String("exchange")) {
    QMetaObject::invokeMethod(scene_->rootObject(), "exchange", Q_ARG(QVariant, number));
  } else if (word == QLatin1String("wizard")) {
    auto* const wizard = new AccountWizard(this);
    wizard->addPage(page<WelcomePage>("Welcome"));
    wizard->addPage(page<PasswordScreen>("Your password?"));
    open(wizard);
  } else if (word == QLatin1String("next")) {
    static_cast<QWizard*>(dialog_)->next();
  } else if (word == QLatin1String("back")) {
    static_cast<QWizard*>(dialog_)->back();
  } else if (word == QLatin1String("dialog")) {
    auto* const dialog = new LoginVC(this);
    dialog->setModal(true);
    dialog->resize(300, 200);
    new QLabel(QStringLiteral("Your password?"), dialog);
    open(dialog);
  } else if (word == QLatin1String("box")) {
    auto* const box = new QMessageBox(QMessageBox::Question, QStringLiteral("Quit"),
                                      QStringLiteral("Really quit?"), QMessageBox::Yes, this);
    box->setModal(true);
    open(box);
  } else if (word == QLatin1String("close")) {
    dialog_->close();
  } else if (word == QLatin1String("hide")) {
    hide();
  } else if (word == QLatin1String("show")) {
    show();
  }
}

void MainWindow::showScene() {
  scene_ = new QQuickWidget;
  scene_->setResizeMode(QQuickWidget::SizeRootObjectToView);
  scene_->setSource(QUrl::fromLocalFile(QStringLiteral(TARNIX_SCENE_FILE)));
  tabs_->setCurrentIndex(tabs_->addTab(scene_, QStringLiteral("Weather")));
}

}  // namespace tarnix::integration
