#include "companion/output/table.h"

#include <gtest/gtest.h>

#include <sstream>

#include "companion/output/display_text.h"

namespace tarnix::companion {
namespace {

const Terminal noTerminal(false, false, std::nullopt);

Table sample() {
  Table table({{"NAME"}, {"PID", Alignment::right}, {"TEXT"}});
  table.addRow({"pentobi", "7", "a rather long text about nothing"});
  table.addRow({"名前", "12345", "short"});
  return table;
}

TEST(Table, AlignsColumnsByWhatIsSeen) {
  EXPECT_EQ(sample().render(noTerminal),
            "NAME       PID  TEXT\n"
            "pentobi      7  a rather long text about nothing\n"
            "名前     12345  short\n");
}

TEST(Table, CutsTheWidestColumnToTheTerminal) {
  EXPECT_EQ(sample().render(Terminal(true, false, 30)),
            "NAME       PID  TEXT\n"
            "pentobi      7  a rather long…\n"
            "名前     12345  short\n");
}

TEST(Table, NeverExceedsATerminalThatHasRoomForItsColumns) {
  for (std::size_t width = 16; width < 60; ++width) {
    std::istringstream lines(sample().render(Terminal(true, false, width)));
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(displayWidth(line), width) << line;
    }
  }
}

TEST(Table, KeepsWhatAHostSaysInsideItsCell) {
  Table table({{"NAME"}, {"TEXT"}});
  table.addRow({"two\nlines", "\x1b[2J"});
  EXPECT_EQ(table.render(noTerminal),
            "NAME        TEXT\n"
            "two\\nlines  \\x1B[2J\n");
}

TEST(Table, ColoursTitlesOnlyWhereColoursAreWanted) {
  Table table({{"NAME"}});
  table.addRow({"a"});
  EXPECT_EQ(table.render(Terminal(true, true, 80)), "\x1b[2mNAME\x1b[0m\na\n");
  EXPECT_EQ(table.render(Terminal(true, false, 80)), "NAME\na\n");
}

}  // namespace
}  // namespace tarnix::companion
