#include "platforms/qt6/shared/simple_markup.h"

#include <algorithm>
#include <array>

namespace tarnix::qt6 {

namespace {

constexpr std::array inlineTags = {"b",    "i",      "u", "s",     "strong", "em",  "font",
                                   "span", "strike", "a", "small", "big",    "code"};

bool isInline(QStringView tag) {
  return std::any_of(inlineTags.begin(), inlineTags.end(), [&](const char* name) {
    return tag.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
  });
}

/// The character that stands for "&name;"; absent when it is none of the common ones.
std::optional<char32_t> characterOf(QStringView name) {
  if (name == u"amp") {
    return U'&';
  }
  if (name == u"lt") {
    return U'<';
  }
  if (name == u"gt") {
    return U'>';
  }
  if (name == u"quot") {
    return U'"';
  }
  if (name == u"apos") {
    return U'\'';
  }
  return std::nullopt;
}

class Reader {
 public:
  explicit Reader(const QString& markup) : markup_(markup) {}

  bool read() {
    while (at_ < markup_.size()) {
      const QChar character = markup_.at(at_);
      if (character == u'<') {
        if (!readTag()) {
          return false;
        }
      } else if (character == u'&') {
        if (!readEntity()) {
          return false;
        }
      } else {
        add(character);
        ++at_;
      }
    }
    return linkDepth_ == 0;
  }

  VisibleText result() const { return {text_.trimmed(), hasLink_ && !hasTextOutsideLinks_}; }

 private:
  bool readTag() {
    const qsizetype end = markup_.indexOf(u'>', at_);
    if (end < 0) {
      return false;
    }
    QStringView tag = QStringView(markup_).mid(at_ + 1, end - at_ - 1);
    at_ = end + 1;
    const bool isEnd = tag.startsWith(u'/');
    tag = isEnd ? tag.mid(1) : tag;
    const auto nameEnd = std::find_if(
        tag.begin(), tag.end(), [](QChar character) { return !character.isLetterOrNumber(); });
    const QStringView name = tag.first(nameEnd - tag.begin());
    if (name.compare(QLatin1String("br"), Qt::CaseInsensitive) == 0) {
      text_ += u'\n';
      return true;
    }
    if (name.compare(QLatin1String("a"), Qt::CaseInsensitive) == 0) {
      // An anchor without a target is no link, and one with a style may be hidden.
      if (!isEnd && !tag.contains(QLatin1String("href"), Qt::CaseInsensitive)) {
        return false;
      }
      linkDepth_ += isEnd ? -1 : 1;
      return linkDepth_ == 0 || linkDepth_ == 1;
    }
    // A style may hide its text or keep its blanks.
    return isInline(name) && !tag.contains(QLatin1String("style"), Qt::CaseInsensitive);
  }

  bool readEntity() {
    const qsizetype end = markup_.indexOf(u';', at_);
    if (end < 0) {
      return false;
    }
    const auto character = characterOf(QStringView(markup_).mid(at_ + 1, end - at_ - 1));
    if (!character) {
      return false;
    }
    add(QChar(static_cast<char16_t>(*character)));
    at_ = end + 1;
    return true;
  }

  void add(QChar character) {
    if (character.isSpace()) {
      if (!text_.isEmpty() && !text_.back().isSpace()) {
        text_ += u' ';
      }
      return;
    }
    text_ += character;
    (linkDepth_ > 0 ? hasLink_ : hasTextOutsideLinks_) = true;
  }

  const QString& markup_;
  qsizetype at_ = 0;
  QString text_;
  int linkDepth_ = 0;
  bool hasLink_ = false;
  bool hasTextOutsideLinks_ = false;
};

}  // namespace

std::optional<VisibleText> readSimpleMarkup(const QString& text) {
  // Blanks that do not break and the like are left to those who know.
  if (text.contains(QChar::Nbsp) || text.contains(QChar::ObjectReplacementCharacter)) {
    return std::nullopt;
  }
  Reader reader(text);
  return reader.read() ? std::optional(reader.result()) : std::nullopt;
}

}  // namespace tarnix::qt6
