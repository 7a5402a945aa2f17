#pragma once

#include <string>
#include <string_view>

#include "pager/tap/tap_block.h"

namespace brantel::host {

// What people should know of what goes to a pager: for whom it is, how it is checked, and what of
// the message does not go with it. Messages are in the code page, as the host has filled them in.

// Of a dial command of the Beeper.
std::string DialWords(std::string_view command);

// Of a block of TAP for this pager ID.
std::string TapWords(std::string_view block, std::string_view pager_id, std::string_view message,
                     const TapBlockRules& rules);

// Of a frame of UCP.
std::string UcpWords(std::string_view frame, std::string_view message);

// Of NTT's line.
std::string NttWords(std::string_view message);

}  // namespace brantel::host
