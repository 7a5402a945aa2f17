#pragma once

#include <windows.h>
#include <oleauto.h>

#include <cstddef>
#include <string>

namespace brantel::host {

// Whether this text of so many characters has been given back. No text of that length may have been
// made since.
bool IsFreed(BSTR text, UINT length);

// What is wrong with a text that a host has left; nothing where it is a BSTR or null.
std::string FaultOf(BSTR text);

// The memory in bytes that this process has for itself.
std::size_t PrivateMemory();

}  // namespace brantel::host
