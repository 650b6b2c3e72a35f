#include "probe/capture/probe_console_handler.h"

#include <chrono>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "probe/capture/probe_web_view_console_capture.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"

namespace tarnix {
namespace {

using platform::PropertyValue;
using Seconds = std::chrono::duration<double>;

const PropertyValue* member(const PropertyValue::Dictionary& dictionary, std::string_view name) {
  for (const PropertyValue::Member& candidate : dictionary.members) {
    if (candidate.name == name) {
      return &candidate.value;
    }
  }
  return nullptr;
}

const std::string* text(const PropertyValue* value) {
  return value == nullptr ? nullptr : std::get_if<std::string>(&value->value);
}

/// Nothing when it is no number, or one that is no point in time.
std::optional<double> number(const PropertyValue* value) {
  if (value == nullptr) {
    return std::nullopt;
  }
  if (const auto* whole = std::get_if<std::int64_t>(&value->value)) {
    return static_cast<double>(*whole);
  }
  if (const auto* natural = std::get_if<std::uint64_t>(&value->value)) {
    return static_cast<double>(*natural);
  }
  const auto* real = std::get_if<double>(&value->value);
  return real != nullptr && std::isfinite(*real) ? std::optional(*real) : std::nullopt;
}

Seconds now() {
  return std::chrono::duration_cast<Seconds>(platform::current().clock->now().time_since_epoch());
}

}  // namespace

ProbeConsoleHandler& ProbeConsoleHandler::shared() {
  static ProbeConsoleHandler& instance = *new ProbeConsoleHandler;
  return instance;
}

void ProbeConsoleHandler::userContentController(platform::UserContentController&,
                                                const platform::ScriptMessage& message) {
  platform::assertMainThread();
  const auto* const body = std::get_if<PropertyValue::Dictionary>(&message.body.value);
  if (body == nullptr) {
    return;
  }
  const std::string* const level = text(member(*body, "level"));
  const std::string* const words = text(member(*body, "message"));
  if (level == nullptr || words == nullptr) {
    return;
  }
  ProbeWebViewConsoleCapture::ConsoleEntry entry{{}, *level, *words, std::nullopt};
  if (const std::string* const url = text(member(*body, "url"))) {
    entry.url = *url;
  }
  const std::optional<double> timestamp = number(member(*body, "timestamp"));
  entry.timestamp = timestamp ? Seconds(*timestamp) : now();
  ProbeWebViewConsoleCapture::addEntry(std::move(entry));
}

}  // namespace tarnix
