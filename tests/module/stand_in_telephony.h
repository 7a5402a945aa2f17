#pragma once

#include <windows.h>

#include "tests/module/import_patch.h"

namespace brantel {

// A telephone line that takes automated voice and answers every call at once, for the module alone
// and while this lives. There can be one at a time. The module keeps what it has found of it, so it
// has to be there before the module's first use of telephony, and the module must not use telephony
// afterwards.
class StandInTelephony {
 public:
  explicit StandInTelephony(HMODULE module);

 private:
  ImportPatch load_;
  ImportPatch find_;
};

}  // namespace brantel
