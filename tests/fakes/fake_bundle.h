#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "probe/platform/bundle.h"

namespace tarnix::fakes {

class FakeBundle : public platform::Bundle {
 public:
  std::optional<std::string> bundleIdentifier() const override { return identifier; }
  std::optional<std::string> infoValue(std::string_view key) const override {
    const auto found = info.find(key);
    return found == info.end() ? std::nullopt : std::optional(found->second);
  }

  std::optional<std::string> identifier = "org.example.demo";
  std::map<std::string, std::string, std::less<>> info;
};

}  // namespace tarnix::fakes
