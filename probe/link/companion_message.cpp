#include "probe/link/companion_message.h"

namespace tarnix {

template <>
struct StringCoding<CompanionMessageType> {
  static std::string_view toString(CompanionMessageType type) { return rawValue(type); }
  static std::optional<CompanionMessageType> fromString(std::string_view raw) {
    return companionMessageType(raw);
  }
};

namespace {

struct Envelope {
  CompanionMessageType type = CompanionMessageType::heartbeat;
  Bytes payload;
  Timestamp timestamp;

  static constexpr auto fields() {
    return std::tuple{Field{"type", &Envelope::type}, Field{"payload", &Envelope::payload},
                      Field{"timestamp", &Envelope::timestamp}};
  }
};

/// The same to write from: a payload can be large and is not copied.
struct OutgoingEnvelope {
  CompanionMessageType type;
  BytesView payload;
  Timestamp timestamp;

  static constexpr auto fields() {
    return std::tuple{Field{"type", &OutgoingEnvelope::type},
                      Field{"payload", &OutgoingEnvelope::payload},
                      Field{"timestamp", &OutgoingEnvelope::timestamp}};
  }
};

}  // namespace

std::optional<std::string> CompanionMessage::encodeEnvelope(std::string start) const {
  return encodeJson(OutgoingEnvelope{type, {payload}, timestamp}, std::move(start));
}

std::optional<CompanionMessage> CompanionMessage::decodeEnvelope(std::string_view json) {
  std::optional<Envelope> envelope = decodeJson<Envelope>(json);
  if (!envelope) {
    return std::nullopt;
  }
  return CompanionMessage{envelope->type, std::move(envelope->payload.data), envelope->timestamp};
}

}  // namespace tarnix
