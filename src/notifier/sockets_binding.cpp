#include "notifier/sockets_binding.h"

namespace brantel {
namespace {

// Stops a started library unless it is kept.
class StartedSockets {
 public:
  explicit StartedSockets(SocketsLibrary& sockets) noexcept : sockets_(&sockets) {}
  StartedSockets(const StartedSockets&) = delete;
  StartedSockets& operator=(const StartedSockets&) = delete;
  ~StartedSockets() {
    if (sockets_ != nullptr) sockets_->Stop();
  }

  void Keep() noexcept { sockets_ = nullptr; }

 private:
  SocketsLibrary* sockets_;
};

}  // namespace

std::shared_ptr<NotifierHost> BindWithSockets(SocketsLibrary& sockets,
                                              const HostQuery& query_host) {
  if (!sockets.Start()) return nullptr;
  StartedSockets started(sockets);
  auto host = query_host();
  if (host) started.Keep();
  return host;
}

}  // namespace brantel
