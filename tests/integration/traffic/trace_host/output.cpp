#include "tests/integration/traffic/trace_host/output.h"

#include <cstdio>

namespace trace_host {
namespace {

QString address;

}  // namespace

const QString& base() { return address; }

void setBase(const QString& newAddress) { address = newAddress; }

void say(const QString& line) {
  std::printf("%s\n", qPrintable(QString(line).replace(address, "BASE")));
}

}  // namespace trace_host
