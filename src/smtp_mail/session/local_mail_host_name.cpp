#include "smtp_mail/session/local_mail_host_name.h"

#include <cstddef>
#include <optional>

namespace brantel {
namespace {

// Of the name, with its NUL.
constexpr std::size_t kCapacity = 256;

std::string HostNameAndDomain(MachineName& machine_name) {
  const auto host_name = machine_name.TcpipParameter("Hostname", kCapacity);
  if (!host_name) return {};
  const std::string name = *host_name + ".";
  std::optional<std::string> domain;
  if (name.size() < kCapacity) {
    domain = machine_name.TcpipParameter("Domain", kCapacity - name.size());
  }
  return (domain ? name + *domain : *host_name).substr(0, kCapacity - 1);
}

}  // namespace

std::string GetLocalMailHostName(MachineName& machine_name) {
  std::string name = HostNameAndDomain(machine_name);
  if (name.empty()) name = machine_name.SocketsHostName().value_or("localhost");
  return name;
}

}  // namespace brantel
