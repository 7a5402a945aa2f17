#include "host/text_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brantel::host {
namespace {

constexpr std::size_t kColumnGap = 2;

// In characters: all bytes but UTF-8's continuation bytes.
std::size_t DisplayWidth(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0U) != 0x80U; }));
}

std::vector<std::size_t> ColumnWidths(std::span<const std::vector<std::string>> rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], DisplayWidth(row[column]));
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
      line.append(widths[column] - DisplayWidth(row[column]) + kColumnGap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    table += line + '\n';
  }
  return table;
}

}  // namespace brantel::host
