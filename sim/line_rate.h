#pragma once

namespace brantel::sim {

// How fast the serial port behind the descriptor is set to send, in bits per second; 0 where it is
// none.
unsigned BitsPerSecond(int descriptor);

}  // namespace brantel::sim
