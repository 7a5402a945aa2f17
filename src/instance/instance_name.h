#pragma once

#include <string_view>

namespace brantel {

// Whether an instance may have this name, which is also the name of its file: not empty, no
// character that leads out of the directory or that no file name holds (\ / : * ? " < > | and
// control characters), not "." or "..", no name of a device (such as "NUL" or "com1.txt"), no dot
// or blank at the end, which the file system would drop, and not more than 255 units long. The name
// is in UTF-16, as the file system sees it: bytes of a code page do not tell a backslash from half
// a character, nor the digits that the system counts its devices by.
bool IsValidInstanceName(std::u16string_view name);

// Whether the system takes this name, in whatever directory, for that of a device.
bool IsDeviceName(std::u16string_view name);

}  // namespace brantel
