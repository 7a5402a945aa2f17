#include "system/windows/module_instance_win32.h"

namespace brantel {
namespace {

HINSTANCE module_instance = nullptr;

}  // namespace

void SetModuleInstance(HINSTANCE instance) noexcept {
  module_instance = instance;
}

HINSTANCE ModuleInstance() noexcept {
  return module_instance;
}

}  // namespace brantel
