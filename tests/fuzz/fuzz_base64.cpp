#include <optional>
#include <string>

#include "probe/link/base64.h"
#include "tests/fuzz/fuzz_check.h"

using namespace tarnix;

/// Any bytes survive being written and read; any text either is refused or stands for bytes that
/// survive.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = fuzz::textOf(data, size);
  fuzz::demand(decodeBase64(encodeBase64(input)) == input);
  if (const std::optional<std::string> bytes = decodeBase64(input)) {
    const std::string again = encodeBase64(*bytes);
    fuzz::demand(again.size() == input.size());
    fuzz::demand(decodeBase64(again) == bytes);
  }
  return 0;
}
