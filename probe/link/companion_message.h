#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "probe/link/companion_message_type.h"
#include "probe/link/json_codec.h"
#include "probe/link/timestamp.h"

namespace tarnix {

/// The one unit of exchange with the companion: a type, the JSON text of the record that belongs to
/// that type, and the time at which the message was built.
///
/// On the wire the envelope is a JSON object with the keys "type", "payload" and "timestamp", and
/// the payload is Base64 inside it, never a nested object.
struct CompanionMessage {
  CompanionMessageType type = CompanionMessageType::heartbeat;
  std::string payload;
  Timestamp timestamp;
  /// In the place of `payload`, for a message that is sent and has long byte strings; else null.
  std::shared_ptr<const JsonText> longPayload = nullptr;

  /// Nothing when the record cannot be encoded (see `encodeJson`).
  template <Record R>
  static std::optional<CompanionMessage> make(CompanionMessageType type, const R& record,
                                              Timestamp now) {
    std::optional<std::string> payload = encodeJson(record);
    if (!payload) {
      return std::nullopt;
    }
    return CompanionMessage{type, *std::move(payload), now};
  }

  /// The same for a record that may be large. It must not change any more.
  template <Record R>
  static std::optional<CompanionMessage> makeLong(CompanionMessageType type,
                                                  std::shared_ptr<const R> record, Timestamp now) {
    std::optional<JsonText> text = encodeJsonText(std::move(record));
    if (!text) {
      return std::nullopt;
    }
    if (text->leftOut.empty()) {
      return CompanionMessage{type, std::move(text->text), now};
    }
    return CompanionMessage{type, "", now, std::make_shared<const JsonText>(*std::move(text))};
  }

  /// The payload as a record; nothing when it is not one (see `decodeJson`).
  template <Record R>
  std::optional<R> decode() const {
    return decodeJson<R>(payload);
  }

  /// The JSON text of the envelope around `payload`, behind `start`; nothing when the timestamp is
  /// not finite.
  std::optional<std::string> encodeEnvelope(std::string start = {}) const;

  /// Nothing when a key is missing, the type is not in the table, the payload is not Base64 or the
  /// timestamp is no number.
  static std::optional<CompanionMessage> decodeEnvelope(std::string_view json);
};

}  // namespace tarnix
