#pragma once

#include <string>

namespace brantel::host {

// The full path of a file that is named relative to the working directory. What has no full path,
// such as an empty name, comes back as it is.
std::wstring FullPath(const std::wstring& file);

bool FileExists(const std::wstring& file);

// The full path of this program's module: Brantel_Notifications.dll in the program's own folder.
std::wstring ModuleBesideHost();

}  // namespace brantel::host
