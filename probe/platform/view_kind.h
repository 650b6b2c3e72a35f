#pragma once

namespace tarnix::platform {

/// The kinds of view that every toolkit has.
enum class ViewKind {
  other,
  button,
  label,
  textField,
  /// Text of many lines that can be edited or scrolled.
  textView,
  toggle,
  slider,
  image,
  tableCell,
  collectionCell,
};

}  // namespace tarnix::platform
