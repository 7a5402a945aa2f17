#pragma once

#include <functional>
#include <string>

#include "popup/network_library.h"
#include "popup/network_neighbourhood.h"

namespace brantel {

// Whether a name goes into a list that has it already.
enum class Repetition { kListed, kLeftOut };

// Takes a name that was found. False when nobody wants any more.
using TakeName = std::function<bool(const std::string& name, Repetition repetition)>;

// Finds what messages can be sent to: first the names of this computer itself, then the domains,
// each with an asterisk for all computers in it, and the servers of the network. Takes as long as
// the network takes to answer, or until nobody wants any more. The library must have
// kMessageNameEnum.
void FindDestinations(NetworkLibrary& library, NetworkNeighbourhood& network, const TakeName& take);

}  // namespace brantel
