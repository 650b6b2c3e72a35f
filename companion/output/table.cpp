#include "companion/output/table.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "companion/output/display_text.h"

namespace tarnix::companion {
namespace {

constexpr std::string_view gap = "  ";
// Below this a column says nothing any more.
constexpr std::size_t narrowestColumn = 4;

}  // namespace

void Table::addRow(std::vector<std::string> cells) {
  for (std::string& cell : cells) {
    cell = printable(cell);
  }
  cells.resize(columns_.size());
  rows_.push_back(std::move(cells));
}

std::vector<std::size_t> Table::columnWidths(const Terminal& terminal) const {
  std::vector<std::size_t> widths;
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    std::size_t width = displayWidth(columns_[index].title);
    for (const std::vector<std::string>& row : rows_) {
      width = std::max(width, displayWidth(row[index]));
    }
    widths.push_back(width);
  }
  if (!terminal.width() || widths.empty()) {
    return widths;
  }
  const std::size_t gaps = gap.size() * (widths.size() - 1);
  const std::size_t room = *terminal.width() > gaps ? *terminal.width() - gaps : 0;
  std::size_t total = std::accumulate(widths.begin(), widths.end(), std::size_t{0});
  while (total > room) {
    const auto widest = std::max_element(widths.begin(), widths.end());
    if (*widest <= narrowestColumn) {
      break;
    }
    --*widest;
    --total;
  }
  return widths;
}

std::string Table::renderRow(const std::vector<std::string>& cells,
                             const std::vector<std::size_t>& widths) const {
  std::string line;
  for (std::size_t index = 0; index < cells.size(); ++index) {
    const std::string text = cutToWidth(cells[index], widths[index]);
    const std::string filler(widths[index] - std::min(displayWidth(text), widths[index]), ' ');
    line += index == 0 ? "" : gap;
    line += columns_[index].alignment == Alignment::right ? filler + text : text + filler;
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

std::string Table::render(const Terminal& terminal) const {
  const std::vector<std::size_t> widths = columnWidths(terminal);
  std::vector<std::string> titles;
  for (const TableColumn& column : columns_) {
    titles.push_back(column.title);
  }
  std::string text = terminal.styled(renderRow(titles, widths), Style::quiet) + "\n";
  for (const std::vector<std::string>& row : rows_) {
    text += renderRow(row, widths) + "\n";
  }
  return text;
}

}  // namespace tarnix::companion
