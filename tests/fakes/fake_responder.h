#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "probe/platform/responder.h"

namespace tarnix::fakes {

/// What was done to views, in order, as text.
using Deeds = std::vector<std::string>;

class FakeRecognizer : public platform::GestureRecognizer {
 public:
  FakeRecognizer(std::string name, bool tap, Deeds& deeds)
      : name_(std::move(name)), tap_(tap), deeds_(deeds) {}

  bool isTap() const override { return tap_; }
  void setEnded() override { deeds_.push_back("ended " + name_); }

 private:
  std::string name_;
  bool tap_;
  Deeds& deeds_;
};

/// Reacts to what its members say, and notes what is done to it.
class FakeResponder : public platform::Responder,
                      public platform::Control,
                      public platform::ScrollView {
 public:
  explicit FakeResponder(Deeds& deeds) : textInput(deeds, *this), keyInput(deeds), deeds_(deeds) {}

  bool isUserInteractionEnabled() const override { return interactionEnabled; }
  bool isFirstResponder() const override { return focused; }
  bool accessibilityActivate() override {
    deeds_.push_back("activate");
    return activates;
  }
  std::vector<std::shared_ptr<platform::GestureRecognizer>> gestureRecognizers() override {
    return recognizers;
  }
  platform::Control* asControl() override { return control ? this : nullptr; }
  platform::ScrollView* asScrollView() override { return scrolls ? this : nullptr; }
  platform::TextInput* asTextInput() override { return editsText ? &textInput : nullptr; }
  platform::KeyInput* asKeyInput() override { return takesKeys ? &keyInput : nullptr; }

  void sendTouchUpInside() override {
    deeds_.push_back("touch up inside");
    if (onTouch) {
      onTouch();
    }
  }

  platform::Point contentOffset() const override { return offset; }
  void setContentOffsetAnimated(platform::Point to) override { offset = to; }

  bool interactionEnabled = true;
  bool focused = false;
  bool activates = false;
  bool control = false;
  bool scrolls = false;
  bool editsText = false;
  bool takesKeys = false;
  std::vector<std::shared_ptr<platform::GestureRecognizer>> recognizers;
  platform::Point offset;
  std::function<void()> onTouch;
  std::function<void(std::string_view)> onText;

 private:
  struct Text : platform::TextInput {
    Text(Deeds& noted, const FakeResponder& of) : deeds(noted), responder(of) {}
    void insertText(std::string_view text) override {
      deeds.push_back("text " + std::string(text));
      if (responder.onText) {
        responder.onText(text);
      }
    }
    Deeds& deeds;
    const FakeResponder& responder;
  };
  struct Keys : platform::KeyInput {
    explicit Keys(Deeds& noted) : deeds(noted) {}
    void insertText(std::string_view character) override {
      deeds.push_back("key " + std::string(character));
    }
    Deeds& deeds;
  };

  Text textInput;
  Keys keyInput;
  Deeds& deeds_;
};

}  // namespace tarnix::fakes
