#pragma once

#include <string>
#include <string_view>

namespace brantel {

// Conversions between the interfaces' UTF-16 and the system's ANSI code page, in which the module
// keeps all text. NULs inside are kept.
std::string ToAnsi(std::wstring_view text);
std::wstring FromAnsi(std::string_view text);

// For paths: a character that the code page does not hold becomes "?", which no file name holds,
// and never a likeness of it, which would name another file. Ends at the first NUL.
std::string ToAnsiPath(std::wstring_view path);

// Whether the code page's double-byte characters begin with this byte.
bool IsLeadByte(char byte);

}  // namespace brantel
