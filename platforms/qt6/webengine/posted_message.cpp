#include "platforms/qt6/webengine/posted_message.h"

#include <QStringView>
#include <utility>

#include "platforms/qt6/webengine/script_wrapping.h"

namespace tarnix::qt6 {

namespace {

using platform::PropertyValue;

/// Reads from the front. Once something is missing everything after it is.
class Reader {
 public:
  explicit Reader(QStringView text) : rest_(text) {}

  bool isAtEnd() const { return rest_.isEmpty(); }

  std::optional<char16_t> letter() {
    if (rest_.isEmpty()) {
      return std::nullopt;
    }
    const char16_t first = rest_.front().unicode();
    rest_ = rest_.sliced(1);
    return first;
  }

  std::optional<QStringView> field() {
    const qsizetype colon = rest_.indexOf(u':');
    bool isNumber = false;
    const qlonglong length = colon < 0 ? 0 : rest_.first(colon).toLongLong(&isNumber);
    if (!isNumber || length < 0 || length > rest_.size() - colon - 1) {
      rest_ = {};
      return std::nullopt;
    }
    const QStringView text = rest_.sliced(colon + 1, length);
    rest_ = rest_.sliced(colon + 1 + length);
    return text;
  }

 private:
  QStringView rest_;
};

PropertyValue scalar(char16_t kind, QStringView text) {
  bool isNumber = false;
  const double number = kind == u'n' ? text.toDouble(&isNumber) : 0;
  if (kind == u's') {
    return {text.toUtf8().toStdString()};
  }
  if (kind == u'b') {
    return {text == u"true"};
  }
  return isNumber ? PropertyValue{number}
                  : PropertyValue{PropertyValue::Other{text.toUtf8().toStdString()}};
}

std::optional<PropertyValue> dictionary(QStringView members) {
  PropertyValue::Dictionary result;
  Reader reader(members);
  while (!reader.isAtEnd()) {
    const std::optional<QStringView> name = reader.field();
    const std::optional<char16_t> kind = reader.letter();
    const std::optional<QStringView> text = reader.field();
    if (!name || !kind || !text) {
      return std::nullopt;
    }
    result.members.emplace_back(name->toUtf8().toStdString(), scalar(*kind, *text));
  }
  return PropertyValue{std::move(result)};
}

std::optional<PropertyValue> bodyFrom(Reader& reader) {
  const std::optional<char16_t> kind = reader.letter();
  const std::optional<QStringView> text = reader.field();
  if (!kind || !text) {
    return std::nullopt;
  }
  return *kind == u'd' ? dictionary(*text) : scalar(*kind, *text);
}

}  // namespace

bool PostedMessage::isOne(const QString& line) { return line.startsWith(messageMark()); }

std::optional<PostedMessage> PostedMessage::parse(const QString& line) {
  Reader reader(QStringView(line).sliced(messageMark().size()));
  PostedMessage message;
  const std::optional<QStringView> document = reader.field();
  const std::optional<char16_t> hasCaller = reader.letter();
  if (!document || !hasCaller) {
    return std::nullopt;
  }
  message.document = document->toString();
  if (*hasCaller == u'+') {
    const std::optional<QStringView> lineNumber = reader.field();
    const std::optional<QStringView> source = reader.field();
    if (!lineNumber || !source) {
      return std::nullopt;
    }
    message.caller = CallSite{lineNumber->toInt(), source->toString()};
  }
  const std::optional<QStringView> handler = reader.field();
  std::optional<PropertyValue> value = bodyFrom(reader);
  if (!handler || !value) {
    return std::nullopt;
  }
  message.handlerName = handler->toUtf8().toStdString();
  message.body = *std::move(value);
  return message;
}

}  // namespace tarnix::qt6
