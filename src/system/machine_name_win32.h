#pragma once

#include "system/machine_name.h"

namespace brantel {

class SystemMachineName final : public MachineName {
 public:
  std::optional<std::string> TcpipParameter(const std::string& name, std::size_t capacity) override;
  std::optional<std::string> SocketsHostName() override;
};

// Stateless, so that all use this one.
inline constinit SystemMachineName system_machine_name;

}  // namespace brantel
