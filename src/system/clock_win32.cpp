#include "system/clock_win32.h"

#include <windows.h>

#include <algorithm>

namespace brantel {

void SystemClock::Wait(std::uint32_t milliseconds) {
  // The largest number means for ever to the system.
  Sleep(std::min<DWORD>(milliseconds, INFINITE - 1));
}

}  // namespace brantel
