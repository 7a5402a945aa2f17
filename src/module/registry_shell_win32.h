#pragma once

#include "module/registry_script.h"

namespace brantel {

// HKEY_CLASSES_ROOT of this machine.
class ClassesRoot final : public RegistryShell {
 public:
  Result CreateKey(const std::string& path) override;
  Result SetText(const std::string& path, const std::string& name,
                 const std::string& text) override;
  Result DeleteTree(const std::string& path) override;
  Result DeleteIfWithoutSubkeys(const std::string& path) override;
};

}  // namespace brantel
