#pragma once

#include "framework/sockets_library.h"

namespace brantel {

// WinSock 1.1.
class WinSock final : public SocketsLibrary {
 public:
  bool Start() override;
  void Stop() noexcept override;
};

}  // namespace brantel
