#include "host/watch/watch_loop.h"

#include <algorithm>

namespace brantel::host {

void WatchLoop::Turn() {
  const Moment now = surroundings_.Now();
  const Watch::Orders orders = watch_.Tick(now);
  // Alerts first: a person waits for them.
  for (const AttemptOrder& order : orders.attempts)
    Begin(order);
  for (const ProbeOrder& order : orders.probes)
    Begin(order, now.steady);
  network_.Run(std::max(watch_.Next(now) - surroundings_.Now().steady, SteadyTime(0)));
}

void WatchLoop::Begin(const ProbeOrder& order, SteadyTime now) {
  latest_probe_ = std::max(latest_probe_, now - order.due);
  const auto take_result = [this, id = order.id](const ProbeResult& result) {
    watch_.TakeProbe(id, result, surroundings_.Now());
  };
  if (order.request.kind != ProbeKind::kIcmp) {
    network_.Probe(order.request, take_result);
    return;
  }
  surroundings_.Ping(order.request, [this, take_result](const ProbeResult& result) {
    network_.Post([take_result, result] { take_result(result); });
  });
}

void WatchLoop::Begin(const AttemptOrder& order) {
  const auto take_result = [this, id = order.decision.id](const AttemptResult& result) {
    watch_.TakeAttempt(id, result, surroundings_.Now());
  };
  surroundings_.Deliver(order, [this, take_result](const AttemptResult& result) {
    network_.Post([take_result, result] { take_result(result); });
  });
}

void WatchLoop::WaitForAttempts(SteadyTime time) {
  const SteadyTime end = surroundings_.Now().steady + time;
  while (watch_.has_attempts() && surroundings_.Now().steady < end)
    network_.Run(end - surroundings_.Now().steady);
}

}  // namespace brantel::host
