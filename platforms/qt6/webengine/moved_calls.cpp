#include "platforms/qt6/webengine/moved_calls.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platforms/qt6/webengine/script_wrapping.h"

namespace tarnix::qt6::moved_calls {

namespace {

/// One a document, and most are taken at once; the rest are of documents that are gone.
constexpr std::size_t maximumExpected = 64;

struct ExpectedCall {
  QString document;
  std::optional<CallSite> caller;
  /// Tells the calls of several documents apart whose processes write at the same time.
  std::vector<std::size_t> texts;
};

// Oldest first.
std::deque<ExpectedCall>& expectedCalls() {
  static std::deque<ExpectedCall>& calls = *new std::deque<ExpectedCall>;
  return calls;
}

std::size_t hashOf(const std::string& text) { return std::hash<std::string>()(text); }

std::vector<std::size_t> textsOf(const platform::PropertyValue& body) {
  std::vector<std::size_t> texts;
  if (const auto* members = std::get_if<platform::PropertyValue::Dictionary>(&body.value)) {
    for (const platform::PropertyValue::Member& member : members->members) {
      if (const auto* text = std::get_if<std::string>(&member.value.value)) {
        texts.push_back(hashOf(*text));
      }
    }
  }
  return texts;
}

bool holds(const ExpectedCall& call, std::size_t text) {
  return std::find(call.texts.begin(), call.texts.end(), text) != call.texts.end();
}

}  // namespace

void expect(const PostedMessage& message) {
  std::deque<ExpectedCall>& calls = expectedCalls();
  std::erase_if(calls, [&](const ExpectedCall& call) { return call.document == message.document; });
  if (calls.size() >= maximumExpected) {
    calls.pop_front();
  }
  calls.push_back({message.document, message.caller, textsOf(message.body)});
}

CallSite original(const QString& message, CallSite reported) {
  std::deque<ExpectedCall>& calls = expectedCalls();
  if (calls.empty() || reported.source != QLatin1String(ownScriptSource)) {
    return reported;
  }
  auto found = calls.begin();
  if (calls.size() > 1) {
    const std::size_t text = hashOf(message.toStdString());
    found = std::find_if(calls.begin(), calls.end(),
                         [text](const ExpectedCall& call) { return holds(call, text); });
    // Objects are written in another way in the console.
    found = found == calls.end() ? calls.begin() : found;
  }
  if (found->caller) {
    reported = *found->caller;
  }
  calls.erase(found);
  return reported;
}

}  // namespace tarnix::qt6::moved_calls
