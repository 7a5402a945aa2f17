#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "sim/timeline.h"
#include "sim/transcript.h"

namespace brantel::sim {

// What a far end works with. All of it outlives the far end.
struct Surroundings {
  // The number that was called.
  std::string number;
  Timeline& timeline;
  Transcript& transcript;
  // Sends bytes to the caller over the carrier.
  std::function<void(std::string_view)> send;
  // Puts the receiver down.
  std::function<void()> hang_up;

  // By which some far ends know what they are to answer.
  [[nodiscard]] std::string LastTwoDigits() const { return number.substr(number.size() - 2); }
};

// Who has answered a call. A far end lives as long as the call, so what it has planned for later
// has to be cancelled in its destructor.
class FarEnd {
 public:
  virtual ~FarEnd() = default;

  // The caller's modem and the far end's are connected.
  virtual void Connect() {}

  // A key of the caller's telephone, 0 to 9, * or #.
  virtual void HearTone(char) {}

  // Bytes over the carrier.
  virtual void Receive(std::string_view) {}
};

}  // namespace brantel::sim
