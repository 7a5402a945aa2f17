#pragma once

#include <string_view>

#include "text/code_page.h"

namespace brantel {

// The text without half a character at its end. In a code page with double-byte characters a lead
// byte takes whatever follows for its second byte: put into a
// larger text, a value with a torn character at its end would swallow the quote behind it.
std::string_view WithoutTornCharacter(std::string_view text, const CodePage& code_page);

}  // namespace brantel
