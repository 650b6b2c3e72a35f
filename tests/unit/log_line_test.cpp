#include "probe/capture/log_line.h"

#include <gtest/gtest.h>

#include <string>

namespace tarnix::tests {
namespace {

struct LineCase {
  std::string line;
  LogLine parsed;
};

TEST(LogLine, IsReadAsATable) {
  const LineCase cases[] = {
      {"[warning] Net.HTTP: timeout", {"WARN", "Net.HTTP", "timeout"}},
      {"[info] started", {"INFO", "app", "started"}},
      {"prefix [Error] x.y: boom", {"ERROR", "x.y", "boom"}},
      {"[custom] hello", {"DEBUG", "app", "hello"}},
      {"plain text", {"DEBUG", "app", "plain text"}},
      // The whole of a line of neither form is its message, brackets, blanks and all.
      {"[two words] hello", {"DEBUG", "app", "[two words] hello"}},
      {"[] hello", {"DEBUG", "app", "[] hello"}},
      {"  [unclosed", {"DEBUG", "app", "  [unclosed"}},
      {"text\r", {"DEBUG", "app", "text\r"}},
      // A category may follow without a blank, and any number of them.
      {"[info]a:b", {"INFO", "a", "b"}},
      {"[info] \t a.b.c:  \t d", {"INFO", "a.b.c", "d"}},
      {"[info] ..: x", {"INFO", "..", "x"}},
      {"[info] a :b", {"INFO", "app", "a :b"}},
      {"[info] a: b: c", {"INFO", "a", "b: c"}},
      {"[info] a:", {"INFO", "a", ""}},
      {"[info]", {"INFO", "app", ""}},
      {"[info] :b", {"INFO", "app", ":b"}},
      // A later category wins over an earlier word without one.
      {"[first] text [error] net: down", {"ERROR", "net", "down"}},
      {"[first] [error] text", {"DEBUG", "app", "[error] text"}},
      {"[[info]] x", {"INFO", "app", "] x"}},
      // What ends lines elsewhere ends a message, and is white space before it.
      {"[info] done\r", {"INFO", "app", "done"}},
      {"[info] one\rtwo", {"INFO", "app", "one"}},
      {"[info]\r\ftwo", {"INFO", "app", "two"}},
      {"[info] a:\rb", {"INFO", "a", "b"}},
      {"[info] one\u2028two", {"INFO", "app", "one"}},
      {"[info] one\u0085two", {"INFO", "app", "one"}},
      {std::string("[info] one\0two", 14), {"INFO", "app", std::string_view("one\0two", 7)}},
      // Words are made of letters of any script, digits, underscores and joiners.
      {"[info] größe.π_2: 3 µm", {"INFO", "größe.π_2", "3 µm"}},
      {"[ошибка] сеть: обрыв", {"DEBUG", "сеть", "обрыв"}},
      {"[info]\u00A0\u3000x", {"INFO", "app", "x"}},
      {"[info] 😀: x", {"INFO", "app", "😀: x"}},
      {"[notıce] x", {"INFO", "app", "x"}},
  };
  for (const LineCase& one : cases) {
    EXPECT_EQ(LogLine::parse(one.line), one.parsed) << one.line;
  }
}

TEST(NormalizeLevel, KnowsElevenWordsInAnyCase) {
  const std::pair<const char*, const char*> cases[] = {
      {"debug", "DEBUG"},     {"TRACE", "DEBUG"},    {"Verbose", "DEBUG"}, {"info", "INFO"},
      {"NOTICE", "INFO"},     {"warn", "WARN"},      {"Warning", "WARN"},  {"error", "ERROR"},
      {"err", "ERROR"},       {"critical", "ERROR"}, {"FAULT", "ERROR"},   {"fatal", "DEBUG"},
      {"warnings", "DEBUG"},  {"inf", "DEBUG"},      {"", "DEBUG"},        {"criticals", "DEBUG"},
      {"INFO_", "DEBUG"},     {"ınfo", "INFO"},      {"verboſe", "DEBUG"}, {"noﬁce", "DEBUG"},
      {"информация", "DEBUG"}};
  for (const auto& [word, level] : cases) {
    EXPECT_EQ(normalizeLevel(word), level) << word;
  }
}

}  // namespace
}  // namespace tarnix::tests
