#pragma once

#include <string>

namespace brantel {

// Numbers of the texts in resources/strings.def that belong to no single class.
namespace text_id {
inline constexpr unsigned kLoadFailed = 300;
inline constexpr unsigned kUnhandledTrigger = 301;
}  // namespace text_id

// The text with this number. The module takes it from its string table resource, other programs
// from a compiled-in table; both are made from resources/strings.def. A number without a text gives
// "%u DEBUG - Unable to load string" with the number filled in, so that a log line is never lost.
std::string LoadText(unsigned id);

// What LoadText gives for a number without a text.
std::string LookupFailureText(unsigned id);

}  // namespace brantel
