#include "platforms/qt6/webengine/script_wrapping.h"

#include <QRandomGenerator>

namespace tarnix::qt6 {

namespace {

// The script gets a window of its own, which is the page's but for the handlers.
constexpr const char* beforeScript = "(function (window) {\n";

// A message is posted as a line to the page's console, which is the one way out that each kind of
// page has; it is taken out again before the application sees it. With it goes where the page's
// call stands: a call that a user script passes on would seem to stand in that script.
//
// Functions of the language are taken before the page can replace them, and the page's own way of
// describing errors is not asked.
constexpr const char* afterScript = R"js(
})((() => {
  'use strict';
  const {apply, get} = Reflect;
  const {defineProperty, getOwnPropertyDescriptor, keys} = Object;
  const {isArray} = Array;
  const AnyError = Error;
  const text = String;
  const page = window;
  const pageConsole = console;
  const {log} = console;
  const mark = '%MARK%';
  const documentName = text(Math.random());

  const field = (value) => value.length + ':' + value;

  function encode(value) {
    switch (typeof value) {
      case 'string': return 's' + field(value);
      case 'number': return 'n' + field(text(value));
      case 'boolean': return 'b' + field(text(value));
      default: return 'x0:';
    }
  }

  function encodeBody(body) {
    if (typeof body !== 'object' || body === null || isArray(body)) {
      return encode(body);
    }
    const names = keys(body);
    let members = '';
    for (let index = 0; index < names.length; ++index) {
      members += field(names[index]) + encode(body[names[index]]);
    }
    return 'd' + field(members);
  }

  function withProperty(name, value, work) {
    const before = getOwnPropertyDescriptor(AnyError, name);
    defineProperty(AnyError, name, {value, configurable: true, enumerable: true, writable: true});
    try {
      return work();
    } finally {
      if (before === undefined) {
        delete AnyError[name];
      } else {
        defineProperty(AnyError, name, before);
      }
    }
  }

  const callSites = () => withProperty('stackTraceLimit', 20,
      () => withProperty('prepareStackTrace', (error, sites) => sites,
                         () => new AnyError().stack));

  function encodeCaller() {
    let line = 0;
    let source = '';
    try {
      const sites = callSites();
      const own = sites[0].getScriptNameOrSourceURL();
      for (let index = 0; index < sites.length; ++index) {
        const site = sites[index];
        const name = site.getScriptNameOrSourceURL();
        if (name !== own && !site.isNative() && site.getLineNumber() !== null) {
          line = site.getLineNumber();
          source = name || '';
          break;
        }
      }
    } catch (error) {
      return '-';
    }
    return '+' + field(text(line)) + field(source);
  }

  const handler = (name) => ({
    postMessage(body) {
      apply(log, pageConsole,
            [mark + field(documentName) + encodeCaller() + field(name) + encodeBody(body)]);
    }
  });
  const webkit = {
    messageHandlers: new Proxy({}, {get: (target, name) => handler(name)})
  };
  return new Proxy(page, {
    get: (target, name) => name === 'webkit' ? webkit : get(target, name)
  });
})());
)js";

}  // namespace

const QString& messageMark() {
  static const QString& mark = *new QString(
      QStringLiteral("tarnixprobe-") +
      QString::number(QRandomGenerator::system()->generate64(), 16) + QLatin1Char(':'));
  return mark;
}

QString wrap(std::string_view source) {
  QString after = QString::fromLatin1(afterScript);
  after.replace(QLatin1String("%MARK%"), messageMark());
  return QLatin1String(beforeScript) +
         QString::fromUtf8(source.data(), static_cast<qsizetype>(source.size())) + after;
}

}  // namespace tarnix::qt6
