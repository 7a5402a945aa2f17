#pragma once

#include <windows.h>

#include <string>

namespace brantel::host {

// What the system says of one of its error numbers, such as "error 2, File not found."
std::string SystemErrorText(DWORD error);

}  // namespace brantel::host
