#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "dialog/dialog_view.h"

namespace brantel {

// The system's own dialogs behind the methods of DialogView.
std::optional<std::string> ChooseFile(HWND owner, const FileKind& kind, const std::string& current);
std::optional<std::string> ChooseDirectory(HWND owner, const std::string& title);

}  // namespace brantel
