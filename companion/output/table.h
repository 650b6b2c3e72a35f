#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "companion/output/terminal.h"

namespace tarnix::companion {

enum class Alignment { left, right };

struct TableColumn {
  std::string title;
  Alignment alignment = Alignment::left;
};

/// Rows for people: columns aligned, and cut where the terminal is too narrow, the widest first.
class Table {
 public:
  explicit Table(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}

  /// One cell for each column, as the host said it; `render` makes it printable.
  void addRow(std::vector<std::string> cells);

  bool isEmpty() const { return rows_.empty(); }

  /// Title line and rows, each ended by a line feed.
  std::string render(const Terminal& terminal) const;

 private:
  std::vector<std::size_t> columnWidths(const Terminal& terminal) const;
  std::string renderRow(const std::vector<std::string>& cells,
                        const std::vector<std::size_t>& widths) const;

  std::vector<TableColumn> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace tarnix::companion
