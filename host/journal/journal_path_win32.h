#pragma once

#include <string>

namespace brantel::host {

// Where the journal is: in the file that is given (UTF-8, as given), or else by its own name in the
// folder, or else in the working directory. Both may be empty.
std::wstring JournalPath(const std::string& given, const std::wstring& folder);

}  // namespace brantel::host
