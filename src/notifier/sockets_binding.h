#pragma once

#include <memory>

#include "notifier/notifier.h"
#include "system/sockets_library.h"

namespace brantel {

// A use of the sockets library. An alert on its way has one of its own: a host that ends the
// binding from within its callbacks would otherwise end the alert's connections with it.
class SocketsInUse {
 public:
  explicit SocketsInUse(SocketsLibrary& sockets) : sockets_(sockets.Start() ? &sockets : nullptr) {}
  SocketsInUse(const SocketsInUse&) = delete;
  SocketsInUse& operator=(const SocketsInUse&) = delete;
  ~SocketsInUse() {
    if (sockets_ != nullptr) sockets_->Stop();
  }

  [[nodiscard]] bool HasStarted() const noexcept { return sockets_ != nullptr; }

  // From now on somebody else stops it.
  void Keep() noexcept { sockets_ = nullptr; }

 private:
  SocketsLibrary* sockets_;  // null when there is nothing to stop
};

// Binds a host to a class that needs the sockets library for as long: starts that and asks for the
// host. The library is stopped again when there is no host or asking for it throws; else whoever
// lets the host go stops it.
std::shared_ptr<NotifierHost> BindWithSockets(SocketsLibrary& sockets, const HostQuery& query_host);

}  // namespace brantel
