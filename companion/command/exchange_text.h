#pragma once

#include <string>

#include "companion/output/terminal.h"
#include "probe/model/transferable_network_request.h"

/// Exchanges for people.
namespace tarnix::companion {

/// One line: time, method, status, duration, size, host and path.
std::string exchangeLine(const TransferableNetworkRequest& exchange, const Terminal& terminal);

/// Headers and bodies, indented below the line.
std::string exchangeDetails(const TransferableNetworkRequest& exchange, const Terminal& terminal);

/// How many bytes, in three digits and a unit.
std::string sizeText(std::uint64_t bytes);

/// Whether bytes can be shown as text.
bool isText(const std::string& bytes);

}  // namespace tarnix::companion
