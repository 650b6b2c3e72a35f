#include "platforms/qt6/shared/spoken_text.h"

namespace tarnix::qt6 {

namespace {

bool isWordAt(const QString& text, qsizetype position) {
  return position >= 0 && position < text.size() && text.at(position).isLetterOrNumber();
}

bool containsWords(const QString& text, const QString& words) {
  for (qsizetype at = text.indexOf(words); at >= 0; at = text.indexOf(words, at + 1)) {
    const qsizetype end = at + words.size();
    const bool startsInsideWord = isWordAt(text, at - 1) && isWordAt(text, at);
    const bool endsInsideWord = isWordAt(text, end - 1) && isWordAt(text, end);
    if (!startsInsideWord && !endsInsideWord) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool SpokenText::covers(const SpokenText* innermost, const QString& text) {
  for (const SpokenText* spoken = innermost; spoken != nullptr; spoken = spoken->outer) {
    if (spoken->label == text || spoken->value == text) {
      return true;
    }
  }
  const QString words = innermost == nullptr ? QString() : text.simplified();
  for (const SpokenText* spoken = innermost; spoken != nullptr; spoken = spoken->outer) {
    if (containsWords(spoken->label.simplified(), words) ||
        containsWords(spoken->value.simplified(), words)) {
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::qt6
