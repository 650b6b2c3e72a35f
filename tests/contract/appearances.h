#pragma once

#include <string>
#include <thread>
#include <vector>

#include "probe/platform/view_controller.h"

namespace tarnix::contract {

/// What a screen said of itself when it appeared.
struct Appearance {
  std::string className;
  std::string title;
  std::string bundlePath;
};

/// Notes what appears for as long as it lives.
class Appearances {
 public:
  explicit Appearances(platform::ViewDidAppear& method)
      : method_(method), original_(method.implementation()) {
    method_.setImplementation([this](platform::ViewController& controller, bool animated) {
      original_(controller, animated);
      threads_.push_back(std::this_thread::get_id());
      all_.push_back(
          {controller.className(), controller.title().value_or(""), controller.bundlePath()});
    });
  }
  ~Appearances() { method_.setImplementation(original_); }
  Appearances(const Appearances&) = delete;
  Appearances& operator=(const Appearances&) = delete;

  const std::vector<Appearance>& all() const { return all_; }
  const std::vector<std::thread::id>& threads() const { return threads_; }
  std::string last() const { return all_.empty() ? std::string() : all_.back().className; }
  std::string lastTitle() const { return all_.empty() ? std::string() : all_.back().title; }
  void forget() { all_.clear(); }

 private:
  platform::ViewDidAppear& method_;
  platform::ViewDidAppear::Implementation original_;
  std::vector<Appearance> all_;
  std::vector<std::thread::id> threads_;
};

}  // namespace tarnix::contract
