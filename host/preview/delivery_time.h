#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brantel::host {

// How long an alert's delivery takes.
struct DeliveryTime {
  std::uint64_t least = 0;     // in milliseconds, when every station answers at once
  std::string beside_least{};  // what comes on top of that in any case, as "the time to connect"
  std::string usual;
  std::string most;  // of the worst course that ends by itself, and which has no end
};

// Of pages, by how they are sent.
inline constexpr std::string_view kMostOfTap =
    "about 5 min: 20 s for the port, 30 s for the modem, 50 s to connect, 70 s until the centre's "
    "prompt, 80 s for the log-in, three blocks of 10 s";
inline constexpr std::string_view kMostOfSmsTap = "about 6 min: likewise with blocks of 35 s";
inline constexpr std::string_view kMostOfNtt = "about 3 min 30 s";
inline constexpr std::string_view kMostOfUcp =
    "about 27 min: three diallings, each of up to 15 reads of 21 s, and 31 reads of 20 s for the "
    "result";

// A page that takes at least so many milliseconds, and at most what one of the texts above says.
DeliveryTime TimeOfPage(std::uint64_t least, std::string_view most);

// A call of the Beeper, of which the settings say more than others'.
DeliveryTime TimeOfBeep(std::uint64_t least);

// A mail with so many replies of the relay, each of which is waited for so many milliseconds.
DeliveryTime TimeOfMail(std::uint64_t least, std::uint32_t replies, std::uint32_t timeout);

DeliveryTime TimeOfPopup(std::uint64_t least);
DeliveryTime TimeOfSound(std::uint64_t least);
DeliveryTime TimeOfProgram(std::uint64_t least);
DeliveryTime TimeOfCall(std::uint64_t least, std::int32_t repetitions);

}  // namespace brantel::host
