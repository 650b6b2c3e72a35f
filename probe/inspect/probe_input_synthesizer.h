#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "probe/model/input_result.h"
#include "probe/platform/window.h"

/// Does on the host what a companion asks, in place of a person's finger and keyboard. Points are
/// those of the key window, in device-independent pixels. Keeps nothing. Main thread.
namespace tarnix::ProbeInputSynthesizer {

using InputResult = tarnix::InputResult;

/// Called at most once, before the host is made to react: the reaction may run a loop of its own (a
/// dialog that is open until somebody closes it), and the operation returns only after it.
using WillAct = std::function<void(const InputResult&)>;

InputResult tap(std::int64_t x, std::int64_t y, const WillAct& willAct = {});

/// Scrolls what lies under the start, by the way from the end to the start. `duration` has no
/// effect: the platform has a pace of its own.
InputResult swipe(std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2,
                  double duration = 0, const WillAct& willAct = {});

/// Into whatever has the focus. UTF-8.
InputResult typeText(std::string_view text, const WillAct& willAct = {});
/// Into what `findFirstResponder` found in the window to act on; null when it found nothing.
InputResult typeText(std::string_view text, const std::shared_ptr<platform::View>& focused,
                     const WillAct& willAct);

/// The window to act on: the key window; null when there is none.
std::shared_ptr<platform::Window> appWindow();

/// The first view with the focus, from `view` down, parents before children; null when none has it.
std::shared_ptr<platform::View> findFirstResponder(std::shared_ptr<platform::View> view);

}  // namespace tarnix::ProbeInputSynthesizer
