#include "win_popup/destination_search.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace brantel {
namespace {

constexpr std::string_view kServerMark = "\\\\";

// Networks are some four levels deep. One that goes on is not followed for ever.
constexpr std::size_t kDeepestLevel = 16;

// Message names are ASCII in practice; of other characters only the low byte is kept.
std::string LowBytes(std::u16string_view text) {
  std::string bytes;
  for (const char16_t character : text) {
    bytes += static_cast<char>(character & 0xFF);
  }
  return bytes;
}

// What messages to the resource are sent to. Empty when they cannot be sent to such a resource.
std::string DestinationOf(const NetworkResource& resource) {
  const std::string name = resource.remote_name.value_or("");
  if (name.empty()) return {};
  switch (resource.display_type) {
    case network_resource::kDomain:
      return name + '*';
    case network_resource::kServer:
      return name.starts_with(kServerMark) ? name.substr(kServerMark.size()) : name;
    default:
      return {};
  }
}

// Whether the network would open the same for both.
bool IsSame(const NetworkResource& one, const NetworkResource& other) {
  return one.remote_name == other.remote_name && one.provider == other.provider &&
         one.display_type == other.display_type;
}

class Browse {
 public:
  Browse(NetworkNeighbourhood& network, const DestinationSeeker& seeker)
      : network_(network), seeker_(seeker) {}

  // Goes through a container, or the whole network for null.
  void Enter(const NetworkResource* container) {
    if (path_.size() == kDeepestLevel || !seeker_.wants_more()) return;
    const auto level = network_.Open(container);
    if (!level) return;
    while (seeker_.wants_more()) {
      const auto found = level->Next();
      if (found.empty()) return;
      for (const NetworkResource& resource : found)
        Visit(resource);
    }
  }

 private:
  void Visit(const NetworkResource& resource) {
    if (!seeker_.wants_more()) return;
    const std::string destination = DestinationOf(resource);
    if (!destination.empty()) seeker_.take(destination, Repetition::kLeftOut);
    if ((resource.usage & network_resource::kContainer) == 0 || IsInside(resource)) return;
    path_.push_back(&resource);
    Enter(&resource);
    path_.pop_back();
  }

  [[nodiscard]] bool IsInside(const NetworkResource& container) const {
    return std::ranges::any_of(path_,
                               [&](const auto* entered) { return IsSame(*entered, container); });
  }

  NetworkNeighbourhood& network_;
  const DestinationSeeker& seeker_;
  // The containers that it is inside of.
  std::vector<const NetworkResource*> path_;
};

}  // namespace

void FindDestinations(NetworkLibrary& library, NetworkNeighbourhood& network,
                      const DestinationSeeker& seeker) {
  for (const std::u16string& name : library.MessageNames()) {
    if (!seeker.wants_more()) return;
    seeker.take(LowBytes(name), Repetition::kListed);
  }
  Browse(network, seeker).Enter(nullptr);
}

}  // namespace brantel
