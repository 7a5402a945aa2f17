#pragma once

#include <windows.h>

#include "tests/module/import_patch.h"

namespace brantel {

// A sound card whose sounds are over at once, and programs that are nothing but handles, both for
// the module alone and while this lives. Sounds and command lines are deliveries of the thread that
// asks for them.
class LocalFarEnds {
 public:
  explicit LocalFarEnds(HMODULE module);

 private:
  ImportPatch play_;
  ImportPatch start_;
};

}  // namespace brantel
