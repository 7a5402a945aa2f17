#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brantel::sim {

// What a modem does for one sign of its dial command.
struct DialStep {
  enum class Kind {
    kTone,   // a key of a telephone
    kPause,  // "," and "W": a while for an exchange or an answering machine
    kCall,   // the number is complete: the exchange puts the call through
  };
  Kind kind;
  char tone = '\0';
  std::string number{};  // for kCall
};

// The steps of a dial command, without its "ATD". The number ends at the first pause, but for a
// single digit before it, which fetches an outside line. Tones behind the number are for who
// answers. Signs that mean nothing to a modem are passed over.
std::vector<DialStep> ParseDialString(std::string_view text);

}  // namespace brantel::sim
