#pragma once

#include <span>
#include <string>
#include <string_view>

namespace brantel::host {

// The one of the names that `given` is most likely a misspelling of, letter case aside: the first
// of those from which it differs least, by at most a third of its characters. Empty when there is
// none.
std::string_view NearestName(std::string_view given, std::span<const std::string_view> names);

// A message for people who gave a name that is none of these: "'sned' is not a command; did you
// mean 'send'?", or "'x' is not a command; the commands are send and show" where none is near.
std::string UnknownName(std::string_view given, const std::string& kind, const std::string& kinds,
                        std::span<const std::string_view> names);

// The names with commas between, and "and" before the last.
std::string NamesInProse(std::span<const std::string_view> names);

}  // namespace brantel::host
