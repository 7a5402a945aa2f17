#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace brantel {

DWORD StyleOf(HWND window);

// A window's place in the dialog.
RECT AreaOf(HWND window, HWND dialog);

// Expects all controls inside the dialog and apart from each other; but a control may stand wholly
// inside a group box.
void ExpectControlsApart(HWND dialog);

// Expects room for the texts of all controls but edits and pictures.
void ExpectTextsWhole(HWND dialog);

// The numbers of the controls that stand in the group box of this title.
std::vector<int> ControlsInGroup(HWND dialog, const std::string& title);

// The controls by number and text.
std::vector<std::string> TextsOf(HWND dialog);

// Where the Tab key stops, from the first stop on.
std::vector<int> TabStops(HWND dialog);

}  // namespace brantel
