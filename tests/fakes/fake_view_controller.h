#pragma once

#include <optional>
#include <string>
#include <utility>

#include "probe/platform/view_controller.h"

namespace tarnix::fakes {

class FakeViewController : public platform::ViewController {
 public:
  explicit FakeViewController(std::string name, std::optional<std::string> screenTitle = {})
      : name_(std::move(name)), title_(std::move(screenTitle)) {}

  std::string className() const override { return name_; }
  std::optional<std::string> title() const override { return title_; }
  std::string bundlePath() const override { return path; }

  std::string path = "/opt/demo";

 private:
  std::string name_;
  std::optional<std::string> title_;
};

}  // namespace tarnix::fakes
