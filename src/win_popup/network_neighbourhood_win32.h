#pragma once

#include "win_popup/network_neighbourhood.h"

namespace brantel {

// The network as the system's network providers know it.
class SystemNeighbourhood final : public NetworkNeighbourhood {
 public:
  std::unique_ptr<NetworkLevel> Open(const NetworkResource* container) override;
};

}  // namespace brantel
