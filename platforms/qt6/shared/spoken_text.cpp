#include "platforms/qt6/shared/spoken_text.h"

#include <utility>

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

SpokenText::SpokenText(QString label, QString value, std::shared_ptr<const SpokenText> outer)
    : label_(label.simplified()), value_(value.simplified()), outer_(std::move(outer)) {}

bool SpokenText::covers(const SpokenText* innermost, const QString& text) {
  if (innermost == nullptr) {
    return false;
  }
  const QString words = text.simplified();
  for (const SpokenText* spoken = innermost; spoken != nullptr; spoken = spoken->outer_.get()) {
    if (containsWords(spoken->label_, words) || containsWords(spoken->value_, words)) {
      return true;
    }
  }
  return false;
}

}  // namespace tarnix::qt6
