#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace brantel::host {

// The longest path that the system handles, with its NUL.
inline constexpr std::size_t kPathCapacity = 32768;

// The full path of a file that is named relative to the working directory. What has no full path,
// such as an empty name, is returned unchanged.
std::wstring FullPath(const std::wstring& file);

// Also when it is a directory.
bool FileExists(const std::wstring& file);

// Whether both paths lead to one file, however they are written: by the file itself where it can be
// opened, by their letters elsewhere.
bool IsSameFile(const std::wstring& one, const std::wstring& other);

// Up to so many of the file's first bytes; none of a file that cannot be read.
std::string FileStart(const std::wstring& file, std::size_t size);

bool IsDirectory(const std::wstring& file);

// The full path of a directory, with a backslash at its end only if it is a drive's root. Throws
// CommandFailure when there is no such directory.
std::wstring ExistingDirectory(const std::wstring& directory);

// The names of the files in a directory, without those of its directories. Throws CommandFailure
// when the directory cannot be read.
std::vector<std::wstring> FilesIn(const std::wstring& directory);

}  // namespace brantel::host
