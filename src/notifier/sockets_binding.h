#pragma once

#include <memory>

#include "notifier/notifier.h"
#include "system/sockets_library.h"

namespace brantel {

// Binds a host to a class that needs the sockets library for as long: starts that and asks for the
// host. The library is stopped again when there is no host or asking for it throws; else whoever
// lets the host go stops it.
std::shared_ptr<NotifierHost> BindWithSockets(SocketsLibrary& sockets, const HostQuery& query_host);

}  // namespace brantel
