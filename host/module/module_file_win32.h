#pragma once

#include <optional>
#include <string>

namespace brantel::host {

// The full path of this program's module: Brantel_Notifications.dll in the program's own folder.
std::wstring ModuleBesideHost();

// The full path of the module file that is given (UTF-8), or else of the one beside the host.
std::wstring ModuleFile(const std::optional<std::string>& given);

}  // namespace brantel::host
