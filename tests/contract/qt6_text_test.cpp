#include <gtest/gtest.h>

#include <QTextDocument>
#include <vector>

#include "platforms/qt6/shared/simple_markup.h"
#include "platforms/qt6/shared/spoken_label.h"
#include "platforms/qt6/shared/spoken_text.h"
#include "platforms/qt6/shared/visible_text.h"

namespace tarnix::qt6 {
namespace {

TEST(Qt6Text, MarksOfShortcutsAreNotRead) {
  struct Case {
    QString text;
    QString shown;
    QString removed;
  };
  const std::vector<Case> cases = {
      {"Plain", "Plain", "Plain"},
      {"&File", "File", "File"},
      {"Save &As...", "Save As...", "Save As..."},
      {"Salt && pepper", "Salt & pepper", "Salt & pepper"},
      {"Salt & pepper", "Salt  pepper", "Salt  pepper"},
      {"At the end&", "At the end", "At the end"},
      {"ファイル(&F)", "ファイル(F)", "ファイル"},
      {"ファイル (&F)...", "ファイル (F)...", "ファイル..."},
      {"(&&)", "(&)", "(&)"},
      {"", "", ""},
  };
  for (const Case& sample : cases) {
    EXPECT_EQ(withoutMnemonic(sample.text, ParenthesisedMnemonic::shown), sample.shown);
    EXPECT_EQ(withoutMnemonic(sample.text, ParenthesisedMnemonic::removed), sample.removed);
  }
}

TEST(Qt6Text, RichTextReadsAsItIsShown) {
  struct Case {
    QString text;
    TextFormat format;
    QString shown;
    bool isLink;
  };
  const std::vector<Case> cases = {
      {"1 < 2 & 3", TextFormat::plain, "1 < 2 & 3", false},
      {"<b>1</b>", TextFormat::plain, "<b>1</b>", false},
      {"a < b", TextFormat::automatic, "a < b", false},
      {"<b>Bold</b> text", TextFormat::automatic, "Bold text", false},
      {"Fish &amp; chips", TextFormat::styled, "Fish & chips", false},
      {"One<br>two", TextFormat::rich, "One\ntwo", false},
      {"<p>One</p><p>two</p>", TextFormat::rich, "One\ntwo", false},
      {"<img src='none.png'>Picture", TextFormat::rich, "Picture", false},
      {"Before<table><tr><td>In it</td></tr></table>after", TextFormat::rich,
       "Before\nIn it\nafter", false},
      {"# Title", TextFormat::markdown, "Title", false},
      {"<a href='x'>Link</a>", TextFormat::automatic, "Link", true},
      {" <a href='x'>One</a> <a href='y'>two</a>", TextFormat::rich, "One two", true},
      {"See <a href='x'>this</a>", TextFormat::rich, "See this", false},
  };
  for (const Case& sample : cases) {
    const VisibleText read = visibleText(sample.text, sample.format);
    EXPECT_EQ(read.text, sample.shown);
    EXPECT_EQ(read.isLink, sample.isLink) << sample.text.toStdString();
  }
}

TEST(Qt6Text, SimpleMarkupReadsAsADocumentReadsIt) {
  for (const char* markup :
       {"<b>Bold</b>", "a <i>b</i> c", "  a \n b\t<b> c</b> ", "one<br>two<br/> three",
        "one <BR> two", "<font color='red'>red</font>", "x &lt; y &amp;&amp; y &gt; z",
        "<a href='x'>link</a>", "see <A HREF='x'>link</A>", "<b> <i>nested</i> </b>", "<b></b>"}) {
    const auto simple = readSimpleMarkup(markup);
    ASSERT_TRUE(simple) << markup;
    QTextDocument document;
    document.setHtml(markup);
    EXPECT_EQ(simple->text.toStdString(), document.toPlainText().trimmed().toStdString()) << markup;
  }
}

TEST(Qt6Text, WhatIsMoreThanSimpleIsLeftToADocument) {
  for (const char* markup :
       {"<p>One</p>", "<ul><li>One</li></ul>", "<img src='x'>", "<style>b {}</style>", "a < b",
        "<!-- hidden -->", "&hearts;", "&#65;", "<a name='x'>anchor</a>", "<a href='x'>open",
        "<span style='white-space: pre'>a  b</span>", "&", "<table><tr><td>x</td></tr></table>"}) {
    EXPECT_FALSE(readSimpleMarkup(markup)) << markup;
  }
}

TEST(Qt6Text, NoTextIsReadWithoutBound) {
  const QString novel(200'000, u'x');
  EXPECT_EQ(visibleText(novel, TextFormat::plain).text.size(), maximumTextLength);
  EXPECT_LE(visibleText("<b>" + novel, TextFormat::rich).text.size(), maximumTextLength);
}

TEST(Qt6Text, ALabelIsOneLine) {
  EXPECT_EQ(inOneLine("One\ntwo\tthree"), "One two three");
  EXPECT_EQ(inOneLine("  framed "), "framed");
  EXPECT_EQ(inOneLine("   "), "   ");
  EXPECT_EQ(inOneLine(""), "");
}

TEST(Qt6Text, ABlankNameIsAMistakeOfAButtonButNotOfAText) {
  namespace traits = platform::accessibility_traits;
  EXPECT_TRUE(saysSomething("  ", traits::button));
  EXPECT_TRUE(saysSomething("\t", traits::image));
  EXPECT_FALSE(saysSomething("  ", traits::staticText));
  EXPECT_FALSE(saysSomething("", traits::button));
}

TEST(Qt6Text, WordsThatAnElementAroundSaysAreCovered) {
  const SpokenText outer{"Delete the file", "", nullptr};
  const SpokenText inner{"Level 12", "Red", &outer};
  for (const char* text : {"Level 12", "Level", "12", "Red", "the file", "Delete  the\nfile"}) {
    EXPECT_TRUE(SpokenText::covers(&inner, text)) << text;
  }
  for (const char* text : {"Lev", "1", "file the", "Blue", "Level 12 Red"}) {
    EXPECT_FALSE(SpokenText::covers(&inner, text)) << text;
  }
  EXPECT_FALSE(SpokenText::covers(nullptr, "Level"));
}

}  // namespace
}  // namespace tarnix::qt6
