#include <optional>
#include <string>

#include "probe/link/companion_message.h"
#include "probe/model/full_sync_payload.h"
#include "probe/model/screen_html_response.h"
#include "tests/fuzz/fuzz_check.h"

using namespace tarnix;

namespace {

/// What could be read can be written, and reads as the same again.
template <class R>
void tryRecord(std::string_view json) {
  const std::optional<R> record = decodeJson<R>(json);
  if (!record) {
    return;
  }
  const std::optional<std::string> written = encodeJson(*record);
  fuzz::demand(written.has_value());
  fuzz::demand(decodeJson<R>(*written) == record);
}

void tryRecords(std::string_view json) {
  tryRecord<FullSyncPayload>(json);
  tryRecord<TransferableNetworkRequest>(json);
  tryRecord<TransferableLogEntry>(json);
  tryRecord<TransferableWSConnection>(json);
  tryRecord<TransferableKeychainEntry>(json);
  tryRecord<TransferableRulesState>(json);
  tryRecord<TarnixFlow>(json);
  tryRecord<ScreenHTMLResponse>(json);
}

}  // namespace

/// The body of a frame: as an envelope with its payload, and as the payload itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::textOf(data, size);
  tryRecords(input);
  if (const std::optional<CompanionMessage> message = CompanionMessage::decodeEnvelope(input)) {
    const std::optional<std::string> written = message->encodeEnvelope();
    fuzz::demand(written.has_value());
    const std::optional<CompanionMessage> again = CompanionMessage::decodeEnvelope(*written);
    fuzz::demand(again && again->type == message->type && again->payload == message->payload &&
                 again->timestamp == message->timestamp);
    // What the time means has to be bounded for any number.
    (void)message->timestamp.toTimePoint();
    tryRecords(message->payload);
  }
  return 0;
}
