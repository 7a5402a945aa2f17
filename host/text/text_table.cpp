#include "host/text/text_table.h"

#include <algorithm>
#include <cstddef>

#include "host/text/utf8_characters.h"

namespace brantel::host {
namespace {

constexpr std::size_t kColumnGap = 2;

std::vector<std::size_t> ColumnWidths(std::span<const std::vector<std::string>> rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], CountCharacters(row[column]));
    }
  }
  return widths;
}

}  // namespace

std::string FormatTextTable(std::span<const std::vector<std::string>> rows) {
  const std::vector<std::size_t> widths = ColumnWidths(rows);
  std::string table;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
      line += row[column];
      line.append(widths[column] - CountCharacters(row[column]) + kColumnGap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    table += line + '\n';
  }
  return table;
}

}  // namespace brantel::host
