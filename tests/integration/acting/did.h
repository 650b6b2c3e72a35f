#pragma once

#include <QString>
#include <cstdio>

/// Says on standard error what happened to a part of the application, for the test that watches.
inline void did(const QString& what) {
  std::fprintf(stderr, "did: %s\n", qUtf8Printable(what));
  std::fflush(stderr);
}
