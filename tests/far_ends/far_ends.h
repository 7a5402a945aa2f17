#pragma once

#include "tests/far_ends/local_far_ends.h"
#include "tests/far_ends/mail_relay.h"
#include "tests/far_ends/messenger.h"
#include "tests/far_ends/modem_line.h"
#include "tests/far_ends/simulated_time.h"
#include "tests/far_ends/stand_in_libraries.h"
#include "tests/far_ends/telephone_network.h"

namespace brantel {

// Everything that alerts go out by, as stand-ins that answer at once, for the module alone and
// while this lives. What they take is told by Deliveries.
struct FarEnds {
  explicit FarEnds(HMODULE module)
      : pauses(module),
        modem(module),
        telephone(module),
        libraries(module, Entries()),
        network(module),
        relay(module),
        local(module) {}

  // Whether nothing is open or taken.
  [[nodiscard]] bool AreIdle() const {
    return modem.IsPortFree() && telephone.IsIdle() && relay.open_connections() == 0 &&
           network.open_levels() == 0;
  }

  SimulatedPauses pauses;
  ModemLine modem;
  TelephoneNetwork telephone;
  StandInLibraries libraries;
  SmallNetwork network;
  MailRelay relay;
  LocalFarEnds local;

 private:
  static std::vector<LibraryEntry> Entries() {
    std::vector<LibraryEntry> entries = TelephoneNetwork::Entries();
    for (const LibraryEntry& entry : MessengerEntries())
      entries.push_back(entry);
    return entries;
  }
};

}  // namespace brantel
