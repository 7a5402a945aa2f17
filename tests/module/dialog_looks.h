#pragma once

#include <windows.h>

namespace brantel {

DWORD StyleOf(HWND window);

// A window's place in the dialog.
RECT AreaOf(HWND window, HWND dialog);

// Expects all controls inside the dialog and apart from each other; but a control may stand wholly
// inside a group box.
void ExpectControlsApart(HWND dialog);

// Expects room for the texts of all controls but edits and pictures.
void ExpectTextsWhole(HWND dialog);

}  // namespace brantel
