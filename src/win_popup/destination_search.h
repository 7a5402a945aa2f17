#pragma once

#include <functional>
#include <string>

#include "win_popup/network_library.h"
#include "win_popup/network_neighbourhood.h"

namespace brantel {

// Whether a name goes into a list that has it already.
enum class Repetition { kListed, kLeftOut };

// Who wants to know what is found.
struct DestinationSeeker {
  // Asked before each name and before everything that the network is asked for. Once false it has
  // to stay so.
  std::function<bool()> wants_more;

  // Takes a name that was found.
  std::function<void(const std::string& name, Repetition repetition)> take;
};

// Finds what messages can be sent to: first the names of this computer itself, then the domains,
// each with an asterisk for all computers in it, and the servers of the network. Takes as long as
// the network takes to answer, or until the seeker wants no more; how much there is in a container
// is bounded by nothing else. The library must have kMessageNameEnum.
void FindDestinations(NetworkLibrary& library, NetworkNeighbourhood& network,
                      const DestinationSeeker& seeker);

}  // namespace brantel
