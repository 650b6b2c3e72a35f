#include "tests/integration/screens/widget_window.h"

#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QStackedWidget>
#include <QTabWidget>

#include "tests/integration/screens/private_library.h"

class InboxPage : public QWidget {};
class MessageScreen : public QWidget {};
class UserProfileDetailViewController : public QWidget {};
class LoginVC : public QDialog {
 public:
  using QDialog::QDialog;
};

namespace tarnix::integration {

namespace {

template <class Page>
QWidget* page(const char* text) {
  auto* const result = new Page;
  new QLabel(QString::fromUtf8(text), result);
  return result;
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

}  // namespace tarnix::integration
