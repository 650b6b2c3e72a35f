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
  const void* page = nullptr;
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

void expect(const void* page, const PostedMessage& message) {
  std::deque<ExpectedCall>& calls = expectedCalls();
  std::erase_if(calls, [&](const ExpectedCall& call) { return call.document == message.document; });
  if (calls.size() >= maximumExpected) {
    calls.pop_front();
  }
  calls.push_back({page, message.document, message.caller, textsOf(message.body)});
}

CallSite original(const void* page, const QString& message, CallSite reported) {
  std::deque<ExpectedCall>& calls = expectedCalls();
  if (calls.empty() || reported.source != QLatin1String(ownScriptSource)) {
    return reported;
  }
  const std::size_t text = hashOf(message.toStdString());
  auto found = std::find_if(calls.begin(), calls.end(), [page, text](const ExpectedCall& call) {
    return call.page == page && holds(call, text);
  });
  if (found == calls.end()) {
    // Objects are written in another way in the console.
    found = std::find_if(calls.begin(), calls.end(),
                         [page](const ExpectedCall& call) { return call.page == page; });
  }
  if (found == calls.end()) {
    return reported;
  }
  if (found->caller) {
    reported = *found->caller;
  }
  calls.erase(found);
  return reported;
}

void forget(const void* page) {
  std::erase_if(expectedCalls(), [page](const ExpectedCall& call) { return call.page == page; });
}

}  // namespace tarnix::qt6::moved_calls
