#include "popup/destination_search.h"

#include <algorithm>

namespace brantel {
namespace {

constexpr std::string_view kServerMark = "\\\\";

// Networks are some four levels deep. One that contains itself is not followed for ever.
constexpr int kDeepestLevel = 16;

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

class Browse {
 public:
  Browse(NetworkNeighbourhood& network, const TakeName& take) : network_(network), take_(take) {}

  // False when nobody wants any more.
  bool Enter(const NetworkResource* container, int depth) {
    if (depth == kDeepestLevel) return true;
    const auto level = network_.Open(container);
    if (!level) return true;
    for (auto found = level->Next(); !found.empty(); found = level->Next()) {
      const auto visit = [&](const NetworkResource& resource) { return Visit(resource, depth); };
      if (!std::ranges::all_of(found, visit)) return false;
    }
    return true;
  }

 private:
  bool Visit(const NetworkResource& resource, int depth) {
    const std::string destination = DestinationOf(resource);
    if (!destination.empty() && !take_(destination, Repetition::kLeftOut)) return false;
    if ((resource.usage & network_resource::kContainer) == 0) return true;
    return Enter(&resource, depth + 1);
  }

  NetworkNeighbourhood& network_;
  const TakeName& take_;
};

}  // namespace

void FindDestinations(NetworkLibrary& library, NetworkNeighbourhood& network,
                      const TakeName& take) {
  for (const std::u16string& name : library.MessageNames()) {
    if (!take(LowBytes(name), Repetition::kListed)) return;
  }
  Browse(network, take).Enter(nullptr, 0);
}

}  // namespace brantel
