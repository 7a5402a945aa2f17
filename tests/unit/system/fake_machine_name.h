#pragma once

#include <optional>
#include <string>
#include <vector>

#include "system/machine_name.h"

namespace brantel {

// A machine with a name.
class FakeMachineName final : public MachineName {
 public:
  std::optional<std::string> host_name = "watch";
  std::optional<std::string> domain;
  std::optional<std::string> sockets_host_name;
  // What was asked for, in order: "NAME CAPACITY" of the parameters, "sockets".
  std::vector<std::string> calls;

  std::optional<std::string> TcpipParameter(const std::string& name,
                                            std::size_t capacity) override {
    calls.push_back(name + " " + std::to_string(capacity));
    return name == "Hostname" ? host_name : domain;
  }
  std::optional<std::string> SocketsHostName() override {
    calls.emplace_back("sockets");
    return sockets_host_name;
  }
};

}  // namespace brantel
