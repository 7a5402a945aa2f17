#include "framework/sockets_binding.h"

namespace brantel {

std::shared_ptr<NotifierHost> BindWithSockets(SocketsLibrary& sockets,
                                              const HostQuery& query_host) {
  if (!sockets.Start()) return nullptr;
  auto host = query_host();
  if (!host) sockets.Stop();
  return host;
}

}  // namespace brantel
