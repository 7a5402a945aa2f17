#include "sim/line_rate.h"

// These are not to be had together with <termios.h>, which knows no rate but those that have a
// name.
#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace brantel::sim {

unsigned BitsPerSecond(int descriptor) {
  termios2 settings{};
  return ioctl(descriptor, TCGETS2, &settings) == 0 ? settings.c_ospeed : 0;
}

}  // namespace brantel::sim
