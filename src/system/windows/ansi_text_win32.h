#pragma once

#include <string>
#include <string_view>

namespace brantel {

// Conversions between the interfaces' UTF-16 and the system's ANSI code page, in which the module
// keeps all text. NULs inside are kept. A character that the code page does not hold becomes its
// likeness or "?". A likeness is never a sign of ASCII: that could mean something to whom the text
// goes, as a quotation mark does in a command line and a line feed in a mail.
std::string ToAnsi(std::wstring_view text);
std::wstring FromAnsi(std::string_view text);

// For paths: a character that the code page does not hold becomes "?", which no file name holds,
// and never a likeness of it, which would name another file. Ends at the first NUL.
std::string ToAnsiPath(std::wstring_view path);

// Whether the code page's double-byte characters begin with this byte.
bool IsLeadByte(char byte);

}  // namespace brantel
