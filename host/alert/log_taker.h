#pragma once

#include <functional>
#include <string_view>

namespace brantel::host {

// Takes the texts of a notifier's log (UTF-8), as they come.
using LogTaker = std::function<void(std::string_view text)>;

}  // namespace brantel::host
