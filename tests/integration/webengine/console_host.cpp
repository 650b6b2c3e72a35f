#include <QApplication>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineView>
#include <cstdio>
#include <iostream>
#include <string>
#include <thread>

/// A browser of two profiles that writes all that it hears of its pages' consoles to standard
/// output. Each line that it reads is a profile, a blank and the address to show; it ends with its
/// input.
namespace {

class Page : public QWebEnginePage {
 public:
  using QWebEnginePage::QWebEnginePage;

 protected:
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                int line, const QString& source) override {
    std::printf("console|%d|%s|%d|%s\n", static_cast<int>(level), qPrintable(message), line,
                qPrintable(source));
    std::fflush(stdout);
  }
};

QWebEngineScript ownScript() {
  QWebEngineScript script;
  script.setName("own");
  script.setSourceCode("console.log('own script in ' + location.protocol)");
  script.setInjectionPoint(QWebEngineScript::DocumentCreation);
  script.setWorldId(QWebEngineScript::MainWorld);
  return script;
}

void say(const char* what, int number) {
  std::printf("%s|%d\n", what, number);
  std::fflush(stdout);
}

class Browser {
 public:
  void show(const QString& profile, const QUrl& url) {
    view_.setPage(profile == "hidden" ? &hiddenPage_ : &storedPage_);
    view_.page()->load(url);
  }

  Browser() {
    stored_.scripts()->insert(ownScript());
    view_.resize(400, 300);
    view_.show();
    QObject::connect(&view_, &QWebEngineView::loadFinished, &view_, [this](bool isLoaded) {
      // What scripts and frames say late belongs to the page.
      QTimer::singleShot(500, &view_, [this, isLoaded] {
        say("scripts",
            static_cast<int>(stored_.scripts()->toList().size()) + view_.page()->scripts().count());
        say("loaded", isLoaded ? 1 : 0);
      });
    });
  }

 private:
  QWebEngineProfile stored_{QStringLiteral("stored")};
  QWebEngineProfile hidden_;
  Page storedPage_{&stored_};
  Page hiddenPage_{&hidden_};
  QWebEngineView view_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  Browser browser;
  std::thread reader([&] {
    std::string profile;
    std::string url;
    while (std::cin >> profile >> url) {
      QMetaObject::invokeMethod(&application, [&browser, profile, url] {
        browser.show(QString::fromStdString(profile), QUrl(QString::fromStdString(url)));
      });
    }
    QMetaObject::invokeMethod(&application, [] { QApplication::quit(); });
  });
  const int code = QApplication::exec();
  reader.join();
  return code;
}
