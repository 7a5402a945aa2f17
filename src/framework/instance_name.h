#pragma once

#include <string_view>

namespace brantel {

// Whether an instance may have this name, which is also the name of its file: not empty, no
// character that leads out of the directory or that no file name holds (\ / : * ? " < > | and
// control characters), not "." or "..", no name of a device (such as "NUL" or "com1.txt"), no dot
// or blank at the end, which the file system would drop, and not more than 255 characters. The name
// is text in a code page whose double-byte characters begin with the bytes for which `is_lead_byte`
// is true: their second byte may look like a backslash and is none.
bool IsValidInstanceName(std::string_view name, bool (*is_lead_byte)(char));

}  // namespace brantel
