#pragma once

#include <span>
#include <string>
#include <vector>

namespace brantel::host {

// Lays out rows of UTF-8 cells as lines in which each column is as wide as its widest cell, two
// blanks apart. Lines have no blanks at their end.
std::string FormatTextTable(std::span<const std::vector<std::string>> rows);

}  // namespace brantel::host
