#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace brantel::sim {

// What the line of an NTT paging service carries.
struct NttPage {
  std::string pager_id;  // without the signs that fill it up
  std::string password;  // empty: none was given
  std::string text;      // in Shift_JIS
};

// What is wrong with a line.
struct NttFault {
  std::string what;
};

// Reads a line without its CR: 25 fixed signs, the pager ID in 15, the password in 4, the length of
// the text in 3 digits, the text of at most 100 bytes.
std::variant<NttPage, NttFault> ReadNttLine(std::string_view line);

}  // namespace brantel::sim
