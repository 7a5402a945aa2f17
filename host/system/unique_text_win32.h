#pragma once

#include <string>

namespace brantel::host {

// A text that no other call gives, on any computer, and that cannot be guessed: a GUID in braces.
// Throws CommandFailure when the system makes none.
std::wstring UniqueText();

}  // namespace brantel::host
