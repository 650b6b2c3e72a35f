#pragma once

#include <QString>

namespace trace_host {

/// The address of the server, as the test gave it. Set before anything is written.
const QString& base();
void setBase(const QString& address);

/// Writes a line; the server's address, which differs from run to run, stands in it as BASE.
void say(const QString& line);

}  // namespace trace_host
