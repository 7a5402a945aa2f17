#pragma once

#include "system/sockets_library.h"

namespace brantel {

// WinSock 1.1.
class WinSock final : public SocketsLibrary {
 public:
  bool Start() override;
  void Stop() noexcept override;
};

// Stateless, so that all use this one.
inline constinit WinSock win_sock;

}  // namespace brantel
