#pragma once

#include <windows.h>
#include <oleauto.h>

namespace brantel {

// These tests are built for 32-bit and for 64-bit Windows, and the module under test has as many
// bits as they have. What differs with them:
inline constexpr bool kIs64Bit = sizeof(void*) == 8;
inline constexpr const wchar_t* kSystemName = kIs64Bit ? L"win64" : L"win32";
inline constexpr SYSKIND kSystemKind = kIs64Bit ? SYS_WIN64 : SYS_WIN32;
// In bytes, what a program is told of how it is to start.
inline constexpr DWORD kStartupSize = kIs64Bit ? 104 : 68;

}  // namespace brantel
