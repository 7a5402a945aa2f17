#pragma once

#include <string>
#include <string_view>

namespace brantel {

// A message as NTT's service takes it: Shift_JIS of at most 100 bytes, in one line.
std::string NttMessage(std::string_view message);

// The line that is a page: order, pager ID, password, and the length and text of a message that
// NttMessage has made.
std::string BuildNttLine(std::string_view pager_id, std::string_view password,
                         std::string_view message);

}  // namespace brantel
