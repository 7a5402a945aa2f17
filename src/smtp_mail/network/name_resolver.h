#pragma once

#include <optional>
#include <string>

#include "smtp_mail/network/mail_socket.h"

namespace brantel {

// Looks up the names of hosts.
class NameResolver {
 public:
  virtual ~NameResolver() = default;

  // The first address of the host with this name; nothing when there is none to be found. Waits for
  // the answer.
  virtual std::optional<Ipv4Address> Resolve(const std::string& name) = 0;
};

}  // namespace brantel
