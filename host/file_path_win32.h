#pragma once

#include <string>
#include <vector>

namespace brantel::host {

// The full path of a file that is named relative to the working directory. What has no full path,
// such as an empty name, comes back as it is.
std::wstring FullPath(const std::wstring& file);

// Also when it is a directory.
bool FileExists(const std::wstring& file);

bool IsDirectory(const std::wstring& file);

// The full path of a directory, with a backslash at its end only if it is a drive's root. Throws
// CommandFailure when there is no such directory.
std::wstring ExistingDirectory(const std::wstring& directory);

// The names of the files in a directory, without those of its directories. Throws CommandFailure
// when they cannot be had.
std::vector<std::wstring> FilesIn(const std::wstring& directory);

// The full path of this program's module: Brantel_Notifications.dll in the program's own folder.
std::wstring ModuleBesideHost();

}  // namespace brantel::host
