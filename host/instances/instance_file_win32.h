#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/instances/instance_file.h"

namespace brantel::host {

// What the file at this full path holds. When it cannot be read, its fault says why.
InstanceFile ReadInstanceFile(const std::wstring& path);

// The same of a file that has to be there. Throws CommandFailure when there is none, or a
// directory.
InstanceFile ReadExistingInstance(const std::wstring& path);

// What the files of a directory hold, by their names.
std::vector<InstanceFile> ReadInstanceDirectory(const std::wstring& directory);

// Writes a file with these bytes, whether there is one or not. Throws CommandFailure when that does
// not succeed.
void WriteInstanceFile(const std::wstring& path, std::string_view content);

}  // namespace brantel::host
