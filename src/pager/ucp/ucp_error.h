#pragma once

#include <string>
#include <string_view>

namespace brantel {

// What a centre's refusal means. `code` is what follows "/N/" in its answer and begins with a code
// of two digits. Deliberately they are taken for hexadecimal ones, which only for codes below 10
// gives the meaning that the protocol has for them. For any other code, and for what is none, the
// text of a failed lookup with the number at which the meaning would stand.
std::string UcpErrorText(std::string_view code);

}  // namespace brantel
