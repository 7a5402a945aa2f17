#pragma once

#include <windows.h>

#include <string>

namespace brantel {

// Puts the process's current directory back in the end to what it was in the beginning.
class CurrentDirectoryKeeper {
 public:
  CurrentDirectoryKeeper() : directory_(GetCurrentDirectoryW(0, nullptr), L'\0') {
    GetCurrentDirectoryW(static_cast<DWORD>(directory_.size()), directory_.data());
  }
  CurrentDirectoryKeeper(const CurrentDirectoryKeeper&) = delete;
  CurrentDirectoryKeeper& operator=(const CurrentDirectoryKeeper&) = delete;
  ~CurrentDirectoryKeeper() { SetCurrentDirectoryW(directory_.c_str()); }

 private:
  std::wstring directory_;
};

}  // namespace brantel
