#pragma once

#include <string>

namespace brantel {

// Numbers of the texts by the names that code calls them.
namespace text_id {
#define STRING(name, id, text) inline constexpr unsigned name = id;
#include "text/strings.def"
#undef STRING

// The names of the pager's protocols stand behind each other, from this one on.
inline constexpr unsigned kFirstProtocol = kProtocolTap;
// The meanings of a UCP centre's refusals stand behind this number, by rows from 1 on.
inline constexpr unsigned kUcpErrors = kUcpChecksumError - 1;
}  // namespace text_id

// The text with this number. The module takes it from its string table resource, other programs
// from a compiled-in table; both are made from text/strings.def. A number without a text gives
// "%u DEBUG - Unable to load string" with the number filled in, so that a log line is never lost.
std::string LoadText(unsigned id);

// What LoadText gives for a number without a text.
std::string LookupFailureText(unsigned id);

}  // namespace brantel
