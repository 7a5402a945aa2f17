#pragma once

#include "smtp_mail/network/name_resolver.h"
#include "system/sockets_library.h"

namespace brantel {

// WinSock's names. Starts the library for each question, since dialogs are shown also where no host
// is bound.
class SystemNameResolver final : public NameResolver {
 public:
  // The library must outlive the object.
  constexpr explicit SystemNameResolver(SocketsLibrary& sockets) : sockets_(sockets) {}

  std::optional<Ipv4Address> Resolve(const std::string& name) override;

 private:
  SocketsLibrary& sockets_;
};

}  // namespace brantel
