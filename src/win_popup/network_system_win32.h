#pragma once

#include "win_popup/network_library.h"

namespace brantel {

class SystemNetwork final : public NetworkSystem {
 public:
  WindowsFamily Family() override;
  std::unique_ptr<NetworkLibrary> Load(std::string_view name) override;
};

}  // namespace brantel
