#include <fmt/format.h>
#include <unicode/regex.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <memory>
#include <sstream>
#include <utility>

#include "companion/command/command_records.h"
#include "companion/command/commands.h"
#include "companion/command/delivery.h"
#include "companion/command/host_session.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "probe/link/json_codec.h"
#include "probe/model/add_intercept_cmd.h"
#include "probe/model/add_mock_cmd.h"
#include "probe/model/fire_deep_link_command.h"
#include "probe/model/remove_cmd.h"
#include "probe/model/url.h"
#include "probe/model/uuid.h"

namespace tarnix::companion {
namespace {

template <Record R>
ExitCode deliverRecord(const CommandOptions& options, CompanionMessageType type, const R& record,
                       Repetition repetition = Repetition::allowed) {
  const std::optional<CompanionMessage> command =
      CompanionMessage::make(type, record, Timestamp::from(std::chrono::system_clock::now()));
  return command ? deliver(options, *command, repetition)
                 : report(ExitCode::usage, "what is to be sent must be UTF-8 text.", options);
}

/// Why a rule would never fit; empty when it may. The probe answers nothing, and a rule that it
/// cannot use is silent.
template <class Options>
std::string mistakeIn(const Options& rule) {
  // What an empty variable of a shell gives; it would fit every request.
  if (rule.pattern.empty()) {
    return "PATTERN is empty. For every request give \"://\".";
  }
  if (rule.mode == "regex") {
    UErrorCode error = U_ZERO_ERROR;
    UParseError place{};
    const std::unique_ptr<icu::RegexPattern> pattern(
        icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(rule.pattern), 0, place, error));
    if (U_FAILURE(error)) {
      return fmt::format("\"{}\" is no regular expression: character {} cannot stand there.",
                         printable(rule.pattern), place.offset);
    }
  }
  const auto isInToken = [](char letter) { return letter > ' ' && letter < '\x7f'; };
  if (rule.method && !std::all_of(rule.method->begin(), rule.method->end(), isInToken)) {
    return fmt::format("\"{}\" is no method.", printable(*rule.method));
  }
  return {};
}

/// The body as given, or what the file holds that "@FILE" names.
std::variant<std::string, ExitCode> bodyFrom(const std::string& argument,
                                             const CommandOptions& options) {
  if (!argument.starts_with('@')) {
    return argument;
  }
  const std::string path = argument.substr(1);
  std::ifstream file(path, std::ios::binary);
  std::ostringstream contents;
  contents << file.rdbuf();
  if (!file) {
    return report(ExitCode::failure,
                  fmt::format("{} cannot be read. Name another file after the @.", path), options);
  }
  AddMockCmd sent;
  sent.responseBody = std::move(contents).str();
  if (!encodeJson(sent)) {
    return report(ExitCode::failure,
                  fmt::format("{} is no text in UTF-8, and nothing else can be sent as the body of "
                              "an answer.",
                              path),
                  options);
  }
  return *std::move(sent.responseBody);
}

/// The identifier alone, so that a script can keep it for the removal.
ExitCode sayAdded(const Uuid& id, const CommandOptions& options) {
  const RuleAdded added{id};
  return writeToStandardOutput(
      options.json ? encodeJson(added).value_or("{}") + "\n" : id.toString() + "\n", options);
}

ExitCode removeRule(const CommandOptions& options, CompanionMessageType type,
                    const std::string& ruleId) {
  if (!Uuid::parse(ruleId)) {
    return report(
        ExitCode::usage,
        fmt::format("\"{}\" is not a rule's identifier. `add` prints it.", printable(ruleId)),
        options);
  }
  return deliverRecord(options, type, RemoveCmd{ruleId});
}

}  // namespace

ExitCode runMockAdd(const CommandOptions& options, const MockOptions& mock) {
  if (const std::string mistake = mistakeIn(mock); !mistake.empty()) {
    return report(ExitCode::usage, mistake, options);
  }
  AddMockCmd command;
  const Uuid id = Uuid::random();
  command.ruleId = id.toString();
  command.urlPattern = mock.pattern;
  command.matchMode = mock.mode;
  command.httpMethod = mock.method;
  command.statusCode = mock.status;
  command.name = mock.name;
  if (mock.body) {
    std::variant<std::string, ExitCode> body = bodyFrom(*mock.body, options);
    if (const ExitCode* code = std::get_if<ExitCode>(&body)) {
      return *code;
    }
    command.responseBody = std::get<std::string>(std::move(body));
  }
  for (const std::string& header : mock.headers) {
    const std::size_t colon = header.find(':');
    if (colon == 0 || colon == std::string::npos) {
      return report(ExitCode::usage,
                    fmt::format("\"{}\" is not a header. Write NAME: VALUE.", printable(header)),
                    options);
    }
    if (!command.responseHeaders) {
      command.responseHeaders.emplace();
    }
    const std::size_t value = header.find_first_not_of(' ', colon + 1);
    command.responseHeaders->insert_or_assign(
        header.substr(0, colon), value == std::string::npos ? "" : header.substr(value));
  }
  const ExitCode code = deliverRecord(options, CompanionMessageType::commandAddMockRule, command);
  return code == ExitCode::success ? sayAdded(id, options) : code;
}

ExitCode runInterceptAdd(const CommandOptions& options, const InterceptOptions& intercept) {
  if (const std::string mistake = mistakeIn(intercept); !mistake.empty()) {
    return report(ExitCode::usage, mistake, options);
  }
  AddInterceptCmd command;
  const Uuid id = Uuid::random();
  command.ruleId = id.toString();
  command.urlPattern = intercept.pattern;
  command.matchMode = intercept.mode;
  command.httpMethod = intercept.method;
  command.name = intercept.name;
  const ExitCode code =
      deliverRecord(options, CompanionMessageType::commandAddInterceptRule, command);
  return code == ExitCode::success ? sayAdded(id, options) : code;
}

ExitCode runMockRemove(const CommandOptions& options, const std::string& ruleId) {
  return removeRule(options, CompanionMessageType::commandRemoveMockRule, ruleId);
}

ExitCode runInterceptRemove(const CommandOptions& options, const std::string& ruleId) {
  return removeRule(options, CompanionMessageType::commandRemoveInterceptRule, ruleId);
}

ExitCode runClear(const CommandOptions& options) {
  return deliver(options, makeCommand(CompanionMessageType::commandClearStore));
}

ExitCode runOpen(const CommandOptions& options, const std::string& url) {
  if (!Url::parse(url) || !Url(url).scheme()) {
    return report(ExitCode::usage,
                  fmt::format("\"{}\" is not a URL. Write it whole, with its scheme, and escape "
                              "blanks and other letters than those of ASCII.",
                              printable(url)),
                  options);
  }
  return deliverRecord(options, CompanionMessageType::commandFireDeepLink, FireDeepLinkCommand{url},
                       Repetition::forbidden);
}

}  // namespace tarnix::companion
