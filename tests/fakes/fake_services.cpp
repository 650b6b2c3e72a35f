#include "tests/fakes/fake_services.h"

#include "probe/platform/demangle.h"
#include "probe/platform/diagnostics.h"
#include "probe/platform/file.h"
#include "probe/platform/memory.h"
#include "probe/platform/png.h"
#include "probe/platform/standard_error.h"

namespace tarnix::fakes {

FakeServices& FakeServices::shared() {
  static FakeServices& services = *new FakeServices;
  return services;
}

void FakeServices::reset() {
  const std::lock_guard guard(mutex);
  lines.clear();
  standardError.clear();
  files.clear();
  fileReaders.clear();
  originalDescriptor = 10;
  lastDescriptor = -1;
  exceptionHandler = nullptr;
  signalHandlers.clear();
  png = "PNG";
}

std::string FakeServices::standardErrorText() const {
  const std::lock_guard guard(mutex);
  std::string text;
  for (const std::string& written : standardError) {
    text += written;
  }
  return text;
}

}  // namespace tarnix::fakes

namespace tarnix::platform {

void writeStandardError(std::string_view text) { writeDescriptor(standardErrorDescriptor, text); }

std::optional<std::string> demangled(const std::string& mangledName) {
  const auto& names = fakes::FakeServices::shared().demangledNames;
  const auto found = names.find(mangledName);
  return found == names.end() ? std::nullopt : std::optional(found->second);
}

std::string pngOf(const Picture&) { return fakes::FakeServices::shared().png; }

std::optional<std::uint64_t> residentMemory() {
  return fakes::FakeServices::shared().residentMemory;
}

void setUncaughtExceptionHandler(UncaughtExceptionHandler handler) {
  fakes::FakeServices::shared().exceptionHandler = handler;
}

void setSignalHandler(int number, SignalHandler handler) {
  fakes::FakeServices::shared().signalHandlers.emplace_back(number, handler);
}

std::vector<std::string> callStackSymbols() { return fakes::FakeServices::shared().callStack; }

std::optional<int> divertStandardError(StandardErrorObserver observer) {
  fakes::FakeServices& services = fakes::FakeServices::shared();
  const std::lock_guard guard(services.mutex);
  if (services.originalDescriptor) {
    services.standardErrorObserver = observer;
  }
  return services.originalDescriptor;
}

void settleStandardError(std::chrono::milliseconds) {}

void writeDescriptor(int descriptor, std::string_view text) {
  fakes::FakeServices& services = fakes::FakeServices::shared();
  const std::lock_guard guard(services.mutex);
  services.lastDescriptor = descriptor;
  services.lines.push_back("stderr: " + std::string(text));
  services.standardError.emplace_back(text);
}

void writeSystemLog(std::string_view line) {
  fakes::FakeServices& services = fakes::FakeServices::shared();
  const std::lock_guard guard(services.mutex);
  services.lines.push_back("system log: " + std::string(line));
}

bool createFile(const std::string& path, std::string_view contents, FileReaders readers) {
  fakes::FakeServices& services = fakes::FakeServices::shared();
  const std::lock_guard guard(services.mutex);
  services.files[path] = contents;
  services.fileReaders[path] = readers;
  return true;
}

}  // namespace tarnix::platform
