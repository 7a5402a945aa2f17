#include "tests/far_ends/simulated_time.h"

#include <utility>

namespace brantel {
namespace {

thread_local sim::Timeline* threads_time = nullptr;

void WINAPI PassPause(DWORD milliseconds) {
  if (threads_time != nullptr) {
    threads_time->AdvanceTo(threads_time->now() + sim::Time(milliseconds));
  }
  SwitchToThread();
}

}  // namespace

OnSimulatedTime::OnSimulatedTime(sim::Timeline& time)
    : before_(std::exchange(threads_time, &time)) {}

OnSimulatedTime::~OnSimulatedTime() {
  threads_time = before_;
}

SimulatedPauses::SimulatedPauses(HMODULE module)
    : sleep_(module, "Sleep", reinterpret_cast<void*>(&PassPause)) {}

}  // namespace brantel
