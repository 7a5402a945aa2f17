#pragma once

#include <string>
#include <string_view>

#include "host/instances/instance_file.h"

namespace brantel::host {

// What the file at this full path holds. When it cannot be read, its fault says why.
InstanceFile ReadInstanceFile(const std::wstring& path);

// Writes a file with these bytes, whether there is one or not. Throws CommandFailure when that does
// not succeed.
void WriteInstanceFile(const std::wstring& path, std::string_view content);

}  // namespace brantel::host
