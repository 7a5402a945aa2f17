#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "tests/module/registry_tree.h"

namespace brantel {

// Names the machine's recorder while it lives.
class ConfiguredRecorder {
 public:
  explicit ConfiguredRecorder(const std::wstring& path) {
    if (KeyExists(HKEY_LOCAL_MACHINE, kProgramsKey)) {
      throw std::runtime_error("this machine has a recorder of its own");
    }
    SetText(CreateKey(HKEY_LOCAL_MACHINE, kProgramsKey).get(), L"SoundRecorder", path);
  }
  ConfiguredRecorder(const ConfiguredRecorder&) = delete;
  ConfiguredRecorder& operator=(const ConfiguredRecorder&) = delete;
  ~ConfiguredRecorder() { DeleteTree(HKEY_LOCAL_MACHINE, kProgramsKey); }

 private:
  static constexpr const wchar_t* kProgramsKey = LR"(SOFTWARE\Brantel\Vantrel\Programs)";
};

}  // namespace brantel
