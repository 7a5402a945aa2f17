#pragma once

#include <string>
#include <string_view>

namespace brantel::host {

// How texts go between the module, which has them in the system's code page, and this host.
struct TextConversions {
  std::string (*to_utf8)(std::string_view code_page_text);
  // As the module takes what hosts give: a character that the code page lacks becomes another one.
  std::string (*to_code_page)(std::string_view utf8_text);
  std::string (*utf16_to_utf8)(std::u16string_view text);
};

}  // namespace brantel::host
