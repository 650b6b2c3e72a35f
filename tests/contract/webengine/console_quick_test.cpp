#include <gtest/gtest.h>

#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QVariant>

#include "tests/contract/webengine/web_engine_world.h"

namespace tarnix::contract {
namespace {

using Messages = std::vector<std::string>;

constexpr const char* applicationSource = R"qml(
import QtQuick
import QtQuick.Window
import QtWebEngine
Window {
  id: window
  visible: true
  width: 200
  height: 200
  property var lines: []
  property int scripts: view.userScripts.collection.length
                        + view.profile.userScripts.collection.length
  function clearScripts() { view.profile.userScripts.clear() }
  function replaceScripts() { view.profile.userScripts.collection = [] }
  function show(url) { view.url = url }
  WebEngineProfile { id: hidden; offTheRecord: true }
  WebEngineProfile { id: stored; offTheRecord: false; storageName: "quick" }
  WebEngineView {
    id: view
    anchors.fill: parent
    profile: profileName === "hidden" ? hidden
                                      : profileName === "stored" ? stored
                                                                 : WebEngine.defaultProfile
    url: address
    onJavaScriptConsoleMessage: (level, message, line, source) => {
      window.lines.push([level, message, line, source].join("|"))
    }
  }
}
)qml";

/// An application of Qt Quick that shows `url` in a profile.
class QuickApplication {
 public:
  QuickApplication(const QString& profile, const QUrl& url) {
    engine_.rootContext()->setContextProperty("profileName", profile);
    engine_.rootContext()->setContextProperty("address", url);
    engine_.loadData(applicationSource);
  }

  QObject* window() const { return engine_.rootObjects().value(0); }
  QStringList lines() const { return window()->property("lines").toStringList(); }

 private:
  QQmlApplicationEngine engine_;
};

TEST(ConsoleOfAQuickView, IsCapturedInEveryProfileAndGoesToTheApplicationAsBefore) {
  for (const char* profile : {"default", "hidden", "stored"}) {
    const QByteArray text = QByteArray("quick-") + profile + ":";
    const QUrl url = pageServer().add(QString("/quick-%1").arg(profile),
                                      "<!doctype html><script>\nconsole.log('" + text +
                                          "a', {b: 1});\n\nconsole.error('" + text +
                                          "b');\nconsole.info('" + text + "c')</script>");
    const QuickApplication application(profile, url);
    ASSERT_NE(application.window(), nullptr);
    EXPECT_EQ(capturedMessages(text.toStdString(), 2),
              (Messages{text.toStdString() + R"(a {"b":1})", text.toStdString() + "b"}));
    EXPECT_TRUE(waitUntil([&] { return application.lines().size() == 3; }));
    const QString address = url.toString();
    const QString start = QString::fromUtf8(text);
    // As one text: a list is printed as numbers.
    EXPECT_EQ(application.lines().join("\n").toStdString(),
              ("0|" + start + "a [object Object]|2|" + address + "\n2|" + start + "b|4|" + address +
               "\n0|" + start + "c|5|" + address)
                  .toStdString());
    EXPECT_EQ(application.window()->property("scripts").toInt(), 0);
  }
}

TEST(ConsoleOfAQuickView, IsCapturedAfterTheApplicationReplacedItsScripts) {
  const auto page = [](const char* name) {
    return pageServer().add(QString("/replaced-%1").arg(name),
                            QByteArray("<script>console.log('replaced:") + name + "')</script>");
  };
  const QuickApplication application("hidden", page("a"));
  ASSERT_EQ(capturedMessages("replaced:", 1), (Messages{"replaced:a"}));
  ASSERT_TRUE(QMetaObject::invokeMethod(application.window(), "clearScripts"));
  ASSERT_TRUE(QMetaObject::invokeMethod(application.window(), "show",
                                        Q_ARG(QVariant, QVariant(page("b")))));
  ASSERT_EQ(capturedMessages("replaced:", 2), (Messages{"replaced:a", "replaced:b"}));
  ASSERT_TRUE(QMetaObject::invokeMethod(application.window(), "replaceScripts"));
  ASSERT_TRUE(QMetaObject::invokeMethod(application.window(), "show",
                                        Q_ARG(QVariant, QVariant(page("c")))));
  EXPECT_EQ(capturedMessages("replaced:", 3), (Messages{"replaced:a", "replaced:b", "replaced:c"}));
}

}  // namespace
}  // namespace tarnix::contract
