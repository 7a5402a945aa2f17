#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace brantel::host {

// What is known of one alert, such as the number that it calls, by name.
using Particulars = std::map<std::string, std::string, std::less<>>;

// Words in which "{ at |speed}" is " at " and the particular named so, or nothing where that is not
// known or empty. A brace is always followed by a bar and a closing brace.
std::string FillIn(std::string_view words, const Particulars& particulars);

// What others have said, as it may stand in a line of our own: without the white space around it,
// its control characters shown by their numbers, and cut where it is long.
std::string Quotable(std::string_view said);

}  // namespace brantel::host
