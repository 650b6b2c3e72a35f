#include "probe/capture/console_user_script.h"

#include <gtest/gtest.h>

#include <QJSEngine>
#include <QString>
#include <QStringList>

namespace tarnix::contract {
namespace {

/// The script in an engine of JavaScript, with the few things of a page that it needs.
class ConsoleUserScript : public testing::Test {
 protected:
  ConsoleUserScript() {
    run(R"js(
      var window = this;
      var posted = [];
      var called = [];
      var location = {href: 'http://127.0.0.1/page'};
      var console = {};
      ['log', 'error', 'warn', 'debug', 'info'].forEach(function (level) {
        console[level] = function () {
          called.push([level, this === console].concat(Array.from(arguments)));
          return 'original ' + level;
        };
      });
      var webkit = {messageHandlers: {tarnixConsole: {postMessage: function (body) {
        posted.push(body);
      }}}};
    )js");
  }

  QJSValue run(const QString& source) {
    QJSValue result = engine_.evaluate(source);
    EXPECT_FALSE(result.isError()) << result.toString().toStdString();
    return result;
  }

  void install() {
    run(QString::fromUtf8(consoleUserScript.data(),
                          static_cast<qsizetype>(consoleUserScript.size())));
  }

  std::string text(const QString& expression) {
    return run("'' + (" + expression + ")").toString().toStdString();
  }

  /// What one call is posted as: its level, a bar and its message.
  std::string postedBy(const QString& call) {
    run("posted.length = 0; " + call);
    return text("posted.map(body => body.level + '|' + body.message).join('\\n')");
  }

  QJSEngine engine_;
};

TEST_F(ConsoleUserScript, TurnsEachArgumentIntoText) {
  install();
  struct Case {
    const char* arguments;
    const char* message;
  };
  const Case cases[] = {
      {R"("a", {b:1}, [2], null, undefined)", R"(a {"b":1} [2] null undefined)"},
      {"", ""},
      {"''", ""},
      {"'', ''", " "},
      {"1.5, -0, NaN, Infinity, true", "1.5 0 NaN Infinity true"},
      {"Symbol('s')", "Symbol(s)"},
      {"[]", "[]"},
      {"[undefined, function () {}]", "[null,null]"},
      {"{}", "{}"},
      {"new Date(0)", R"("1970-01-01T00:00:00.000Z")"},
      {"new Error('x')", "{}"},
      {"/x/", "{}"},
      {"new String('x')", R"("x")"},
      {"{toJSON: function () { return 'j'; }}", R"("j")"},
      {"{toJSON: function () { return undefined; }}, 'x'", " x"},
      {"'%s', 'x'", "%s x"},
      {R"('\u00e9\ud83d\ude00')", "\xC3\xA9\xF0\x9F\x98\x80"},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(postedBy(QStringLiteral("console.log(%1)").arg(one.arguments)),
              std::string("log|") + one.message)
        << one.arguments;
  }
}

TEST_F(ConsoleUserScript, WritesValuesThatDoNotConvertInAnotherWay) {
  install();
  EXPECT_EQ(postedBy("var ring = {}; ring.self = ring; console.log('a', ring, 'b')"),
            "log|a [object Object] b");
  EXPECT_EQ(postedBy("console.log({toJSON: function () { throw 1; }, "
                     "toString: function () { return 'own'; }})"),
            "log|own");
  EXPECT_EQ(postedBy("console.log({get x() { throw 1; }})"), "log|[object Object]");
  // Neither way leads to a text.
  EXPECT_EQ(postedBy("var bare = Object.create(null); bare.self = bare; console.log('a', bare)"),
            "log|a [object Object]");
  EXPECT_EQ(postedBy("console.log({toJSON: function () { throw 1; }, "
                     "toString: function () { throw 2; }})"),
            "log|[object Object]");
}

TEST_F(ConsoleUserScript, WrapsFourFunctionsAndNoOther) {
  install();
  EXPECT_EQ(postedBy("console.log('a'); console.error('b'); console.warn('c'); "
                     "console.debug('d'); console.info('x')"),
            "log|a\nerror|b\nwarn|c\ndebug|d");
  EXPECT_EQ(text("called.map(call => call.join(' ')).join('\\n')"),
            "log true a\nerror true b\nwarn true c\ndebug true d\ninfo true x");
}

TEST_F(ConsoleUserScript, CallsTheOriginalWithTheSameArgumentsAndTheConsole) {
  install();
  run("var thing = {}; var log = console.log;");
  EXPECT_EQ(text("log(thing, 1)"), "original log");
  EXPECT_EQ(text("called[0][1]"), "true") << "the console is the receiver";
  EXPECT_EQ(text("called[0][2] === thing"), "true");
  EXPECT_EQ(text("called[0].length"), "4");
}

TEST_F(ConsoleUserScript, PostsBeforeItCalls) {
  run("console.log = function () { called.push(posted.length); }");
  install();
  run("console.log('a')");
  EXPECT_EQ(text("called[0]"), "1");
}

TEST_F(ConsoleUserScript, SaysWhereAndWhen) {
  install();
  run("var before = Date.now() / 1000; console.warn('a'); var after = Date.now() / 1000;");
  EXPECT_EQ(text("posted[0].url"), "http://127.0.0.1/page");
  EXPECT_EQ(text("typeof posted[0].timestamp"), "number");
  EXPECT_EQ(text("before <= posted[0].timestamp && posted[0].timestamp <= after"), "true");
  EXPECT_EQ(text("Object.keys(posted[0]).sort()"), "level,message,timestamp,url");
}

TEST_F(ConsoleUserScript, RunsOnceAPage) {
  install();
  EXPECT_EQ(text("window.__tarnixConsoleInstalled"), "true");
  install();
  EXPECT_EQ(postedBy("console.log('a')"), "log|a");
}

TEST_F(ConsoleUserScript, DoesNothingWhereTheGuardStands) {
  run("window.__tarnixConsoleInstalled = 'yes'");
  install();
  EXPECT_EQ(postedBy("console.log('a')"), "");
  EXPECT_EQ(text("called.length"), "1");
}

TEST_F(ConsoleUserScript, SwallowsEveryErrorOfPosting) {
  install();
  for (const char* broken :
       {"webkit.messageHandlers.tarnixConsole.postMessage = function () { throw 1; }",
        "webkit.messageHandlers.tarnixConsole = undefined", "webkit.messageHandlers = {}",
        "webkit = undefined"}) {
    run(broken);
    EXPECT_EQ(text("console.log('a')"), "original log") << broken;
  }
}

TEST_F(ConsoleUserScript, PassesOnWhatTheOriginalThrows) {
  run("console.log = function () { throw new Error('mine'); }");
  install();
  EXPECT_EQ(text("(function () { try { console.log(1); } catch (e) { return e.message; } })()"),
            "mine");
}

TEST_F(ConsoleUserScript, LooksLikeTheFunctionsThatItWraps) {
  install();
  EXPECT_EQ(text("console.error.name + ' ' + console.error.length"), "error 0");
  EXPECT_EQ(text("Object.keys(console)"), "log,error,warn,debug,info");
  EXPECT_EQ(text("Object.keys(window).includes('__tarnixConsoleInstalled')"), "false");
}

TEST_F(ConsoleUserScript, KeepsTheLanguagesFunctionsThatThePageReplaces) {
  install();
  EXPECT_EQ(postedBy("JSON.stringify = String = null; Date.now = null; console.log({a: 1}, 2)"),
            R"(log|{"a":1} 2)");
}

}  // namespace
}  // namespace tarnix::contract
