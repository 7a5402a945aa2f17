#include "host/system/running_process_win32.h"

#include <array>
#include <cstdint>

#include "system/windows/handle_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// File times count from the year 1601, in tenths of microseconds.
std::chrono::sys_time<std::chrono::milliseconds> ToTime(const FILETIME& time) {
  constexpr std::int64_t kTicksPerMillisecond = 10000;
  constexpr std::chrono::sys_days kFirstDay = std::chrono::year(1601) / 1 / 1;
  const std::int64_t ticks =
      (static_cast<std::int64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
  return kFirstDay + std::chrono::milliseconds(ticks / kTicksPerMillisecond);
}

}  // namespace

std::string ComputerName() {
  std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
  DWORD size = name.size();
  GetComputerNameW(name.data(), &size);
  return ToUtf8(name.data());
}

bool IsRunning(DWORD process, const PointInTime& time) {
  // Clocks are set now and then.
  constexpr std::chrono::seconds kTolerance{2};
  const Handle handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, process));
  FILETIME created{};
  FILETIME exited{};
  FILETIME kernel{};
  FILETIME user{};
  return handle && WaitForSingleObject(handle.get(), 0) == WAIT_TIMEOUT &&
         GetProcessTimes(handle.get(), &created, &exited, &kernel, &user) != FALSE &&
         ToTime(created) <= time.utc + kTolerance;
}

}  // namespace brantel::host
