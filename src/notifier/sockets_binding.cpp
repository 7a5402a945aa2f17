#include "notifier/sockets_binding.h"

namespace brantel {

std::shared_ptr<NotifierHost> BindWithSockets(SocketsLibrary& sockets,
                                              const HostQuery& query_host) {
  SocketsInUse sockets_in_use(sockets);
  if (!sockets_in_use.HasStarted()) return nullptr;
  auto host = query_host();
  if (host) sockets_in_use.Keep();
  return host;
}

}  // namespace brantel
