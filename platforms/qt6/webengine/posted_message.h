#pragma once

#include <QString>
#include <optional>
#include <string>

#include "probe/platform/property_value.h"

namespace tarnix::qt6 {

/// Where a call stands in the scripts of a page, as the engine names it.
struct CallSite {
  int line = 0;
  QString source;
};

/// What a user script posted, as it comes out of a page's console: the mark, the document, where
/// the page's call stands, the handler, the body. Each text is written as its length in UTF-16
/// units, a colon and the text.
struct PostedMessage {
  /// Different for each document that is shown.
  QString document;
  /// Nothing when the page keeps the engine from telling.
  std::optional<CallSite> caller;
  std::string handlerName;
  /// Members that are no text, number or truth value come as `PropertyValue::Other`.
  platform::PropertyValue body;

  static bool isOne(const QString& line);
  /// Nothing when the text is not as described: a page's own, by whatever accident.
  static std::optional<PostedMessage> parse(const QString& line);
};

}  // namespace tarnix::qt6
