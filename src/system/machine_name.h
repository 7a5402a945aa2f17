#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace brantel {

// Where the system keeps this machine's name.
class MachineName {
 public:
  virtual ~MachineName() = default;

  // A text of the system's TCP/IP parameters, such as "Hostname" or "Domain", as it is now. Nothing
  // when there is none or when it takes more than `capacity` bytes with its NUL.
  virtual std::optional<std::string> TcpipParameter(const std::string& name,
                                                    std::size_t capacity) = 0;

  // The name by which the sockets library knows the machine, if that has been started and the name
  // has fewer than 250 bytes.
  virtual std::optional<std::string> SocketsHostName() = 0;
};

}  // namespace brantel
