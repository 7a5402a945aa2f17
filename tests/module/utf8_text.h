#pragma once

#include <string>
#include <string_view>

namespace brantel {

// Texts as failure messages and expected registry trees show them.
std::string ToUtf8(std::wstring_view text);

}  // namespace brantel
