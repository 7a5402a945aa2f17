#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace brantel {

// What a directive inserts.
using FormatArgument = std::variant<std::string_view, std::uint32_t>;

// A formatted text is cut to what a buffer of this many bytes holds beside its NUL.
inline constexpr std::size_t kFormatCapacity = 1024;

// Fills arguments into a format in the manner of the system's wsprintf. Formats come from operators
// and hosts as well as from the string table, so every text is a valid one:
//
//   %%              a percent sign
//   %s %S           the next argument; %.5s at most five bytes of it
//   %c %C           the next argument's first byte
//   %d %i           the next argument as a signed decimal number
//   %u              as an unsigned decimal number
//   %x %X %p        as a hexadecimal number; %#x with "0x" before it
//   %n              nothing, and it takes no argument
//
// Between the percent sign and the letter may stand the flags "-" (blanks behind instead of before)
// "0" (zeros before a number) and "#", a width, a precision, and a size such as "l" or "I64", which
// changes nothing. Width and precision count as kFormatCapacity when they are larger. An argument
// of the other kind is inserted all the same: a text as it is, a number in decimal. Without an
// argument left, %s and %c insert nothing and the numbers 0. A percent sign that begins none of
// these stands for itself. The letters for floating point are none of these, nor is "*".
std::string FormatText(std::string_view format,
                       std::initializer_list<FormatArgument> arguments = {});

}  // namespace brantel
