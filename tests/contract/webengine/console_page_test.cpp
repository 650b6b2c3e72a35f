#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <QWebChannel>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>
#include <algorithm>
#include <chrono>

#include "tests/contract/webengine/web_engine_world.h"

namespace tarnix::contract {
namespace {

using Messages = std::vector<std::string>;

/// A page that says something in its very first line.
QByteArray pageSaying(const QByteArray& text, const QByteArray& more = {}) {
  return "<!doctype html><script>console.log('" + text + "')</script>" + more;
}

TEST(ConsoleOfAPage, IsCapturedFromTheFirstLine) {
  const QUrl url = pageServer().add(
      "/first", pageSaying("first:a", R"(<body><script>console.error("first:b", {b: 1}, [2], null,
          undefined); console.warn("first:c"); console.debug("first:d"); console.info("first:x")
          </script>)"));
  ListeningPage page;
  const auto now = [] {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch());
  };
  const auto before = now();
  ASSERT_TRUE(page.loadAndWait(url));
  EXPECT_EQ(capturedMessages("first:", 4),
            (Messages{"first:a", R"(first:b {"b":1} [2] null undefined)", "first:c", "first:d"}));
  const auto entries = entriesWith("first:");
  const char* const levels[] = {"log", "error", "warn", "debug"};
  for (std::size_t index = 0; index < 4; ++index) {
    EXPECT_EQ(entries[index].level, levels[index]);
    EXPECT_EQ(entries[index].url, url.toString().toStdString());
    EXPECT_GE(entries[index].timestamp + std::chrono::seconds(1), before);
    EXPECT_LE(entries[index].timestamp, now() + std::chrono::seconds(1));
  }
}

TEST(ConsoleOfAPage, GoesToTheApplicationAsBefore) {
  const QUrl url = pageServer().add("/lines", R"(<!doctype html><script>
console.log("lines:a", {b: 1});
console.error("lines:b");
  console.warn("lines:c");
console.debug("lines:d");
console.info("lines:e");
eval("\n\nconsole.log('lines:f')\n//# sourceURL=evaluated.js");
setTimeout(console.log, 1, "lines:g");
function deep(count) { if (count) { deep(count - 1); } else { console.log("lines:h"); } }
deep(100);
</script>)");
  ListeningPage page;
  ASSERT_TRUE(page.loadAndWait(url));
  ASSERT_TRUE(waitUntil([&] { return page.linesWith("lines:").size() >= 8; }));
  const std::vector<ConsoleLine> lines = page.linesWith("lines:");
  const ConsoleLine expected[] = {
      {0, "lines:a [object Object]", 2, url.toString()},
      {2, "lines:b", 3, url.toString()},
      {1, "lines:c", 4, url.toString()},
      {0, "lines:d", 5, url.toString()},
      {0, "lines:e", 6, url.toString()},
      {0, "lines:f", 3, "evaluated.js"},
      {0, "lines:h", 9, url.toString()},
      {0, "lines:g", 0, ""},
  };
  ASSERT_EQ(lines.size(), std::size(expected));
  for (std::size_t index = 0; index < lines.size(); ++index) {
    EXPECT_EQ(lines[index].level, expected[index].level) << index;
    EXPECT_EQ(lines[index].message, expected[index].message) << index;
    EXPECT_EQ(lines[index].line, expected[index].line) << index;
    EXPECT_EQ(lines[index].source, expected[index].source) << index;
  }
  EXPECT_EQ(page.lines.size(), lines.size()) << "nothing of ours";
}

TEST(ConsoleOfAPage, IsWrittenAsDescribedByTheEngineItself) {
  ListeningPage page;
  ASSERT_TRUE(page.loadAndWait(pageServer().add("/values", R"(<!doctype html><script>
console.log("values:", Symbol("s"), 10n, function f() { return 1; }, class A {}, new Error("e"));
var ring = {}; ring.self = ring; console.log("values:", ring, {n: 10n});
var bare = Object.create(null); bare.self = bare; console.log("values:", bare);
var revoked = Proxy.revocable({}, {}); revoked.revoke(); console.log("values:", revoked.proxy);
console.log("values:", "\ud800", "\u0000|", "gr\u00fc\u00df \ud83d\udc3b");
console.log("values:", document, window.name, location);
</script>)")));
  const Messages messages = capturedMessages("values:", 6);
  ASSERT_EQ(messages.size(), 6U);
  EXPECT_EQ(messages[0], "values: Symbol(s) 10 function f() { return 1; } class A {} {}");
  EXPECT_EQ(messages[1], "values: [object Object] [object Object]");
  EXPECT_EQ(messages[2], "values: [object Object]");
  EXPECT_EQ(messages[3], "values: [object Object]");
  EXPECT_EQ(messages[4], std::string("values: ? ") + std::string(1, '\0') +
                             "| gr\xC3\xBC\xC3\x9F \xF0\x9F\x90\xBB");
  EXPECT_NE(messages[5].find("\"href\":"), std::string::npos) << messages[5];
}

TEST(ConsoleOfAPage, IsCapturedUnderAStrictPolicy) {
  ListeningPage page;
  ASSERT_TRUE(page.loadAndWait(pageServer().add(
      "/policy", "<!doctype html><script nonce=n>console.log('policy:a')</script>",
      "Content-Security-Policy: default-src 'none'; script-src 'nonce-n'; sandbox allow-scripts; "
      "require-trusted-types-for 'script'\r\n")));
  EXPECT_EQ(capturedMessages("policy:", 1), (Messages{"policy:a"}));
}

TEST(ConsoleOfAPage, IsCapturedOfEverySource) {
  ListeningPage page;
  ASSERT_TRUE(page.loadAndWait(QUrl("data:text/html,<script>console.log('source:data')</script>")));
  const QTemporaryDir folder;
  QFile file(folder.filePath("page.html"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(pageSaying("source:file"));
  file.close();
  ASSERT_TRUE(page.loadAndWait(QUrl::fromLocalFile(file.fileName())));
  ASSERT_TRUE(page.doAndWait([&page] {
    page.setHtml(QString::fromUtf8(pageSaying("source:html")), QUrl("http://127.0.0.1:1/base"));
  }));
  EXPECT_EQ(capturedMessages("source:", 3),
            (Messages{"source:data", "source:file", "source:html"}));
  ASSERT_TRUE(page.loadAndWait(QUrl("about:blank")));
  page.evaluate("console.log('source:blank')");
  EXPECT_EQ(capturedMessages("source:", 4).back(), "source:blank");
}

TEST(ConsoleOfAPage, IsCapturedOfEveryKindOfFrame) {
  const QUrl foreign = pageServer().add("/foreign", pageSaying("frame:foreign"), {}, "localhost");
  const QUrl inner = pageServer().add("/inner", pageSaying("frame:inner"));
  const QUrl same = pageServer().add(
      "/same", pageSaying("frame:same", "<iframe src='" + inner.toEncoded() + "'></iframe>"));
  ListeningPage page;
  ASSERT_TRUE(page.loadAndWait(
      pageServer().add("/frames", "<!doctype html><iframe src='" + foreign.toEncoded() +
                                      "'></iframe><iframe src='" + same.toEncoded() + R"('></iframe>
<iframe srcdoc="<script>console.log('frame:document')</script>"></iframe>
<iframe sandbox="allow-scripts" srcdoc="<script>console.log('frame:sandbox')</script>"></iframe>
<iframe src="data:text/html,<script>console.log('frame:data')</script>"></iframe>
<iframe id=blob></iframe><script>
blob.src = URL.createObjectURL(new Blob(["<script>console.log('frame:blob')</" + "script>"],
                                        {type: 'text/html'}));
</script>)")));
  Messages messages = capturedMessages("frame:", 7);
  std::sort(messages.begin(), messages.end());
  EXPECT_EQ(messages, (Messages{"frame:blob", "frame:data", "frame:document", "frame:foreign",
                                "frame:inner", "frame:same", "frame:sandbox"}));
}

TEST(ConsoleOfAPage, IsCapturedInEveryProfile) {
  QWebEngineProfile hidden;
  QWebEngineProfile stored("stored");
  for (QWebEngineProfile* profile : {&hidden, &stored}) {
    const QByteArray text = profile->isOffTheRecord() ? "profile:hidden" : "profile:stored";
    ListeningPage page(profile);
    ASSERT_TRUE(
        page.loadAndWait(pageServer().add("/" + QString::fromUtf8(text), pageSaying(text))));
    EXPECT_EQ(page.lines.size(), 1U);
  }
  EXPECT_EQ(capturedMessages("profile:", 2), (Messages{"profile:hidden", "profile:stored"}));
}

TEST(ConsoleOfAPage, IsCapturedInWindowsThatThePageOpens) {
  const QUrl popup = pageServer().add("/popup", pageSaying("popup:inside"));
  const QUrl opener =
      pageServer().add("/opener", "<script>window.open('" + popup.toEncoded() + "')</script>");
  ListeningPage page;
  page.settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
  ASSERT_TRUE(page.loadAndWait(opener));
  EXPECT_EQ(capturedMessages("popup:", 1), (Messages{"popup:inside"}));
  ASSERT_EQ(page.opened.size(), 1U);
  // The line itself comes after what was captured of it.
  EXPECT_TRUE(waitUntil([&] { return !page.opened[0]->linesWith("popup:").empty(); }));
  EXPECT_EQ(page.opened[0]->linesWith("popup:").size(), 1U);
}

TEST(ConsoleOfAPage, IsCapturedAfterEachNavigation) {
  const QUrl one = pageServer().add("/one", pageSaying("again:one"));
  const QUrl two = pageServer().add("/two", pageSaying("again:two"));
  ListeningPage page;
  for (const QUrl& url : {one, two, one}) {
    ASSERT_TRUE(page.loadAndWait(url));
  }
  EXPECT_EQ(capturedMessages("again:", 3), (Messages{"again:one", "again:two", "again:one"}));
}

TEST(ConsoleOfAPage, StaysWholeWhateverItsSize) {
  ListeningPage page;
  ASSERT_TRUE(page.loadAndWait(pageServer().add("/large", R"(<script>
console.log("large:" + "\u00e9".repeat(3000000));
for (let index = 0; index < 4000; ++index) { console.log("row:" + index); }
console.log("large:end");
</script>)")));
  ASSERT_TRUE(waitUntil([] { return entriesWith("large:end").size() == 1; }));
  EXPECT_EQ(page.linesWith("row:").size(), 4000U);
  ASSERT_EQ(page.linesWith("large:").size(), 2U);
  EXPECT_EQ(page.linesWith("large:")[0].message.size(), 3'000'006);
  const Messages rows = capturedMessages("row:", 199);
  ASSERT_EQ(rows.size(), 199U);
  for (std::size_t index = 0; index < rows.size(); ++index) {
    EXPECT_EQ(rows[index], "row:" + std::to_string(4000 - 199 + index));
  }
}

TEST(ConsoleOfAPage, ShowsThePageNothingOfTheWayOut) {
  ListeningPage page;
  ASSERT_TRUE(page.loadAndWait(pageServer().add("/seen", R"(<script>
var seen = [typeof window.webkit, Error.stackTraceLimit, 'prepareStackTrace' in Error,
            Object.keys(window).filter(name => /tarnix/i.test(name)).length];
var asked = 0;
Error.prepareStackTrace = function (error, sites) { ++asked; return 'own'; };
Error.stackTraceLimit = 3;
console.log("seen:a");
seen.push(asked, Error.stackTraceLimit, new Error().stack, asked);
Object.freeze(Error);
console.log("seen:b");
seen.push(asked);
</script>)")));
  EXPECT_EQ(page.evaluate("JSON.stringify(seen)").toString(),
            R"(["undefined",10,false,0,0,3,"own",1,1])");
  EXPECT_EQ(capturedMessages("seen:", 2), (Messages{"seen:a", "seen:b"}));
}

TEST(ConsoleOfAPage, LeavesTheApplicationsScriptsAlone) {
  QWebEngineProfile profile;
  QWebEngineScript own;
  own.setName("own");
  own.setSourceCode("window.fromProfile = typeof webkit; console.log('script:profile')");
  own.setInjectionPoint(QWebEngineScript::DocumentCreation);
  own.setWorldId(QWebEngineScript::MainWorld);
  profile.scripts()->insert(own);
  ListeningPage page(&profile);
  QWebEngineScript other;
  other.setName("other");
  other.setSourceCode("window.fromPage = 1; console.log('script:page')");
  other.setInjectionPoint(QWebEngineScript::DocumentCreation);
  other.setWorldId(QWebEngineScript::MainWorld);
  page.scripts().insert(other);
  const QUrl url = pageServer().add("/scripts", pageSaying("script:document"));
  ASSERT_TRUE(page.loadAndWait(url));
  EXPECT_EQ(profile.scripts()->count(), 1);
  EXPECT_EQ(page.scripts().count(), 1);
  EXPECT_EQ(page.evaluate("[window.fromProfile, window.fromPage].join()").toString(),
            "undefined,1");
  const std::vector<ConsoleLine> lines = page.linesWith("script:");
  ASSERT_EQ(lines.size(), 3U);
  for (const ConsoleLine& line : lines) {
    EXPECT_EQ(line.source, line.message == "script:document" ? url.toString()
                           : line.message == "script:page"   ? QString("userscript:other")
                                                             : QString("userscript:own"));
    EXPECT_EQ(line.line, 1);
  }
}

TEST(ConsoleOfAPage, IsCapturedAfterTheApplicationClearedItsScripts) {
  QWebEngineProfile profile;
  ListeningPage page(&profile);
  const QUrl url = pageServer().add("/cleared", pageSaying("cleared:a"));
  ASSERT_TRUE(page.loadAndWait(url));
  EXPECT_TRUE(profile.scripts()->isEmpty());
  profile.scripts()->clear();
  ASSERT_TRUE(page.loadAndWait(url));
  EXPECT_EQ(capturedMessages("cleared:", 2).size(), 2U);
}

TEST(ConsoleOfAPage, RunsTheScriptOnceADocument) {
  QWebEngineProfile profile;
  ListeningPage page(&profile);
  const QUrl url = pageServer().add("/runs", pageSaying("runs:a"));
  for (int round = 0; round < 5; ++round) {
    ASSERT_TRUE(page.loadAndWait(url));
  }
  page.evaluate("delete window.__tarnixConsoleInstalled; 1");
  // Were it there several times, a page without the guard would be wrapped as often.
  QWebEngineScript unguard;
  unguard.setName("unguard");
  unguard.setSourceCode(
      "Object.defineProperty(window, '__tarnixConsoleInstalled', "
      "{get: () => false, set: () => {}})");
  unguard.setInjectionPoint(QWebEngineScript::DocumentCreation);
  unguard.setWorldId(QWebEngineScript::MainWorld);
  profile.scripts()->insert(unguard);
  for (int round = 0; round < 3; ++round) {
    ASSERT_TRUE(page.loadAndWait(pageServer().add("/once", pageSaying("once:a"))));
  }
  EXPECT_EQ(capturedMessages("once:", 3).size(), 3U);
}

TEST(ConsoleOfAPage, LeavesTheWebChannelAlone) {
  QFile library(":/qtwebchannel/qwebchannel.js");
  ASSERT_TRUE(library.open(QIODevice::ReadOnly));
  QObject object;
  QWebChannel channel;
  channel.registerObject("object", &object);
  ListeningPage page;
  page.setWebChannel(&channel);
  ASSERT_TRUE(page.loadAndWait(pageServer().add(
      "/channel",
      "<script>" + library.readAll() +
          "</script><script>new QWebChannel(qt.webChannelTransport, channel => {"
          "channel.objects.object.objectName = 'hello'; console.log('channel:a') })</script>")));
  EXPECT_TRUE(waitUntil([&] { return object.objectName() == "hello"; }));
  EXPECT_EQ(capturedMessages("channel:", 1), (Messages{"channel:a"}));
}

}  // namespace
}  // namespace tarnix::contract
