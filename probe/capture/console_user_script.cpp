#include "probe/capture/console_user_script.h"

namespace tarnix {

// Functions of the language are taken before the page can replace them. A bound method stands for
// each wrapped function, since like those it has a name, no declared parameters, is no constructor
// and says of itself that its code is native: pages ask for that.
const std::string_view consoleUserScript = R"js((function () {
  'use strict';
  if (window.__tarnixConsoleInstalled) {
    return;
  }
  Object.defineProperty(window, '__tarnixConsoleInstalled',
                        {value: true, writable: true, configurable: true});
  const console = window.console;
  const {stringify} = JSON;
  const {now} = Date;
  const {apply} = Reflect;
  const text = String;

  function textOf(value) {
    try {
      return typeof value === 'object' ? stringify(value) : text(value);
    } catch (error) {
      try {
        return text(value);
      } catch (otherError) {
        return '[object Object]';
      }
    }
  }

  function send(level, values) {
    try {
      let message = '';
      for (let index = 0; index < values.length; ++index) {
        const part = textOf(values[index]);
        message += (index > 0 ? ' ' : '') + (part === undefined ? '' : part);
      }
      window.webkit.messageHandlers.tarnixConsole.postMessage(
          {level: level, message: message, url: window.location.href, timestamp: now() / 1000.0});
    } catch (error) {
      // The page is not to notice.
    }
  }

  function wrap(level) {
    const original = console[level];
    const wrapped = {
      [level](...values) {
        send(level, values);
        return apply(original, console, values);
      }
    }[level].bind();
    console[level] = Object.defineProperty(wrapped, 'name', {value: level});
  }

  wrap('log');
  wrap('error');
  wrap('warn');
  wrap('debug');
})();
)js";

}  // namespace tarnix
