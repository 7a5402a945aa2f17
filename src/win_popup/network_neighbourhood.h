#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace brantel {

// Kinds of resources, and a bit of their usage; the system's numbers.
namespace network_resource {
inline constexpr std::uint32_t kDomain = 1;
inline constexpr std::uint32_t kServer = 2;
inline constexpr std::uint32_t kContainer = 2;
}  // namespace network_resource

// Something in the network, as the system describes it: a network, a domain, a server or what that
// offers. Texts that the description lacks are not the same as empty ones to who opens it.
struct NetworkResource {
  std::uint32_t scope = 0;
  std::uint32_t type = 0;
  std::uint32_t display_type = 0;
  std::uint32_t usage = 0;
  std::optional<std::string> local_name{};
  std::optional<std::string> remote_name{};
  std::optional<std::string> comment{};
  std::optional<std::string> provider{};
};

// An open level of the network.
class NetworkLevel {
 public:
  virtual ~NetworkLevel() = default;

  // The next resources of the level, which may take long to find out. None when there are no more,
  // or none that can be found out.
  virtual std::vector<NetworkResource> Next() = 0;
};

class NetworkNeighbourhood {
 public:
  virtual ~NetworkNeighbourhood() = default;

  // Opens what is in a container, or in the whole network for null. Null when that fails.
  virtual std::unique_ptr<NetworkLevel> Open(const NetworkResource* container) = 0;
};

}  // namespace brantel
